#include "app/FrameOutput.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <QDir>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "app/RawFrames.h"
#include "media/ImageFiles.h"
#include "recording/FramePath.h"

namespace pixelgrove {

namespace {

constexpr int kPipeBytes = 1 << 20;  // the most that Linux gives every user by default

class FileOutput : public FrameOutput {
  public:
    FileOutput(const QString& folder, const QString& format) : folder_(folder), format_(format) {}

    QString Write(int frame, const Bitmap& picture) override {
        const std::optional<QString> name = FormatNumber(format_, uint32_t(frame));
        if (!name) return QStringLiteral("\"%1\" gives frame %2 no name.").arg(format_).arg(frame);
        const QString path = folder_.filePath(*name);
        QString reason;
        if (SaveBitmapImage(picture, path, &reason)) return {};
        return QStringLiteral("%1 can't be written: %2.").arg(path, reason);
    }

  private:
    const QDir folder_;
    const QString format_;
};

// Also where whoever made the pipe left it non-blocking. False with errno.
bool WriteAll(int descriptor, std::span<const uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes = bytes.subspan(size_t(written));
        } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
            pollfd room{descriptor, POLLOUT, 0};
            poll(&room, 1, -1);
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

class PipeOutput : public FrameOutput {
  public:
    PipeOutput(PipeForm form, const FrameRate& rate) : form_(form), rate_(rate) {}

    QString Write(int frame, const Bitmap& picture) override {
        if (WriteFrame(picture)) return {};
        if (errno == EPIPE)
            return QStringLiteral("the program that reads the frames ended before it had frame %1.")
                .arg(frame);
        return QStringLiteral("frame %1 can't be written to standard output: %2.")
            .arg(frame)
            .arg(qt_error_string(errno));
    }

  private:
    // False with errno.
    bool WriteFrame(const Bitmap& picture) {
        if (form_ == PipeForm::Rgb24) {
            ToRgb24(picture, bytes_);
            return WriteAll(STDOUT_FILENO, bytes_);
        }
        if (!hasHeader_) {
            const QByteArray header = Y4mHeader(picture.width, picture.height, rate_);
            bytes_.assign(header.begin(), header.end());
            if (!WriteAll(STDOUT_FILENO, bytes_)) return false;
            hasHeader_ = true;
        }
        ToY4mFrame(picture, bytes_);
        return WriteAll(STDOUT_FILENO, bytes_);
    }

    const PipeForm form_;
    const FrameRate rate_;
    bool hasHeader_ = false;
    std::vector<uint8_t> bytes_;
};

}  // namespace

std::unique_ptr<FrameOutput> OpenFrameOutput(const RenderOptions& options, QString* problem) {
    if (options.pipe == PipeForm::None) {
        if (QDir(options.outFolder).exists())
            return std::make_unique<FileOutput>(options.outFolder, options.format);
        *problem = QStringLiteral("there is no folder %1.").arg(options.outFolder);
        return nullptr;
    }
    if (isatty(STDOUT_FILENO)) {
        *problem = QStringLiteral("--pipe writes raw frames, and standard output is a terminal.");
        return nullptr;
    }
    std::signal(SIGPIPE, SIG_IGN);
    // Fewer turns between writer and reader; what is no pipe refuses.
    fcntl(STDOUT_FILENO, F_SETPIPE_SZ, kPipeBytes);
    return std::make_unique<PipeOutput>(options.pipe, options.rate);
}

}  // namespace pixelgrove
