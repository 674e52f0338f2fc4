#include "soundfile/SoundFile.h"

#include <sndfile.h>

#include <QFile>
#include <algorithm>
#include <span>

#include "platform/Files.h"
#include "platform/LateLibrary.h"

namespace pixelgrove {

namespace {

constexpr int64_t kFramesAtOnce = 4096;
constexpr int kMaxChannels = 256;
constexpr int kMaxRate = 768000;

// libsndfile's functions, loaded with the first file.
struct SndfileLibrary {
    decltype(&sf_open) open;
    decltype(&sf_close) close;
    decltype(&sf_readf_float) readFrames;
    decltype(&sf_error) error;
    decltype(&sf_strerror) errorText;
    QString problem;  // nothing may be called where there is one
};

SndfileLibrary LoadSndfile() {
    SndfileLibrary sndfile{};
    LateLibrary library("libsndfile.so.1");
    library.Find("sf_open", sndfile.open);
    library.Find("sf_close", sndfile.close);
    library.Find("sf_readf_float", sndfile.readFrames);
    library.Find("sf_error", sndfile.error);
    library.Find("sf_strerror", sndfile.errorText);
    sndfile.problem = library.Problem();
    return sndfile;
}

const SndfileLibrary& Sndfile() {
    static const SndfileLibrary sndfile = LoadSndfile();
    return sndfile;
}

QString ReasonOf(SNDFILE* file) {
    QString text = QString::fromLocal8Bit(Sndfile().errorText(file)).trimmed();
    if (text.startsWith(QLatin1String("Error : "))) text.remove(0, 8);
    while (text.endsWith(u'.'))
        text.chop(1);
    return text;
}

}  // namespace

std::unique_ptr<SoundFile> SoundFile::Open(const QString& path, QString* reason) {
    if (!IsPlainFile(path)) {
        *reason = QFile::exists(path) ? QStringLiteral("it is no file") : QStringLiteral("it isn't there");
        return nullptr;
    }
    if (!Sndfile().problem.isEmpty()) {
        *reason = QStringLiteral("the library that reads sound is missing: %1").arg(Sndfile().problem);
        return nullptr;
    }
    SF_INFO info{};
    SNDFILE* file = Sndfile().open(QFile::encodeName(path).constData(), SFM_READ, &info);
    if (!file) {
        *reason = ReasonOf(nullptr);
        return nullptr;
    }
    if (info.channels < 1 || info.channels > kMaxChannels || info.samplerate < 1 ||
        info.samplerate > kMaxRate) {
        *reason = QStringLiteral("%1 channels at %2 Hz are no sound that can be heard")
                      .arg(info.channels)
                      .arg(info.samplerate);
        Sndfile().close(file);
        return nullptr;
    }
    return std::unique_ptr<SoundFile>(new SoundFile(file, info.samplerate, info.channels));
}

SoundFile::SoundFile(sf_private_tag* file, int rate, int channels)
    : file_(file),
      rate_(rate),
      format_{SoundFormat::Sample::Float32, channels, double(rate)},
      analysis_(parameters_),
      frames_([this](SampleBlock& samples) { rows_ = analysis_.Analyze(samples, BinsFor20k(rate_)); }),
      samples_(size_t(kFramesAtOnce) * size_t(channels)) {}

SoundFile::~SoundFile() {
    Sndfile().close(file_);
}

bool SoundFile::HearUpTo(int64_t soundFrames, QString* reason) {
    while (heard_ < soundFrames) {
        const int64_t wanted = std::min(soundFrames - heard_, kFramesAtOnce);
        int64_t read = 0;
        if (!isOver_) {
            read = Sndfile().readFrames(file_, samples_.data(), wanted);
            if (Sndfile().error(file_) != SF_ERR_NO_ERROR) {
                *reason = ReasonOf(file_);
                return false;
            }
            isOver_ = read < wanted;
        }
        const auto silence = samples_.begin() + read * format_.channels;
        std::fill(silence, samples_.end(), 0.0f);
        const std::span heard = std::span(samples_).first(size_t(wanted) * size_t(format_.channels));
        frames_.Take(format_, std::as_bytes(heard));
        heard_ += wanted;
    }
    return true;
}

}  // namespace pixelgrove
