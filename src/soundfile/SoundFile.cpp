#include "soundfile/SoundFile.h"

#include <sndfile.h>

#include <QFile>
#include <algorithm>
#include <span>

#include "platform/Files.h"

namespace pixelgrove {

namespace {

constexpr int64_t kFramesAtOnce = 4096;
constexpr int kMaxChannels = 256;
constexpr int kMaxRate = 768000;

QString ReasonOf(SNDFILE* file) {
    QString text = QString::fromLocal8Bit(sf_strerror(file)).trimmed();
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
    SF_INFO info{};
    SNDFILE* file = sf_open(QFile::encodeName(path).constData(), SFM_READ, &info);
    if (!file) {
        *reason = ReasonOf(nullptr);
        return nullptr;
    }
    if (info.channels < 1 || info.channels > kMaxChannels || info.samplerate < 1 ||
        info.samplerate > kMaxRate) {
        *reason = QStringLiteral("%1 channels at %2 Hz are no sound that can be heard")
                      .arg(info.channels)
                      .arg(info.samplerate);
        sf_close(file);
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
    sf_close(file_);
}

bool SoundFile::HearUpTo(int64_t soundFrames, QString* reason) {
    while (heard_ < soundFrames) {
        const int64_t wanted = std::min(soundFrames - heard_, kFramesAtOnce);
        int64_t read = 0;
        if (!isOver_) {
            read = sf_readf_float(file_, samples_.data(), wanted);
            if (sf_error(file_) != SF_ERR_NO_ERROR) {
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
