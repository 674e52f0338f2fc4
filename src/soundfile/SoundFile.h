// SoundFile: a sound file heard step by step, through the analysis that the desktop's sound takes, so that
// what is heard depends on the file alone.
//
// By libsndfile: WAV, FLAC, Ogg, MP3 and others; the content decides. Owned and used by one thread.
#pragma once

#include <QString>
#include <cstdint>
#include <memory>
#include <vector>

#include "audio/AudioParameters.h"
#include "audio/SoundFrames.h"
#include "audio/SpectrumAnalysis.h"
#include "media/LiveFeeds.h"

struct sf_private_tag;

namespace pixelgrove {

class SoundFile {
  public:
    // Null when the file is missing, no plain file, or no sound that can be read; reason then says why, as a
    // clause.
    static std::unique_ptr<SoundFile> Open(const QString& path, QString* reason);
    ~SoundFile();
    SoundFile(const SoundFile&) = delete;
    SoundFile& operator=(const SoundFile&) = delete;

    // Sound frames a second.
    int Rate() const { return rate_; }

    // Hears on until so many sound frames in all have passed; behind the file's end there is silence. False
    // when the file is damaged there, with the reason.
    bool HearUpTo(int64_t soundFrames, QString* reason);

    // The rows after the last full block; blank before the first.
    const AudioBlock& Rows() const { return rows_; }

  private:
    SoundFile(sf_private_tag* file, int rate, int channels);

    sf_private_tag* const file_;
    const int rate_;
    const SoundFormat format_;
    const AudioParameters parameters_;
    SpectrumAnalysis analysis_;
    SoundFrames frames_;
    AudioBlock rows_{};
    std::vector<float> samples_;  // of some sound frames
    int64_t heard_ = 0;
    bool isOver_ = false;
};

}  // namespace pixelgrove
