#include "render/LiveTextures.h"

#include <GL/glew.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <vector>

#include "media/LiveFeeds.h"
#include "render/GlSetup.h"
#include "render/InputState.h"

namespace pixelgrove {

namespace {

constexpr int kWebcamFrames = 16;  // from one picture to the next

void UploadSingleChannelRows(GLuint texture, int width, int height, const uint8_t* rows) {
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_R8_SNORM, width, height, 0, GL_RED, GL_UNSIGNED_BYTE, rows);
}

void FeedPalette(RenderContext& context, const SharedPalette& shared) {
    std::vector<uint32_t> row;
    {
        const Hold palette(shared);
        if (palette->count == 0 || palette->serial == context.paletteSerial) return;
        row.assign(palette->colours.begin(), palette->colours.begin() + palette->count);
        context.paletteSerial = palette->serial;
    }
    const auto width = uint32_t(row.size());
    if (context.paletteTexture != 0 && context.paletteWidth != width) {
        glDeleteTextures(1, &context.paletteTexture);
        context.paletteTexture = 0;
    }
    if (context.paletteTexture != 0) {
        glBindTexture(GL_TEXTURE_2D, context.paletteTexture);
        glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, GLsizei(width), 1, GL_BGRA, GL_UNSIGNED_BYTE, row.data());
        glBindTexture(GL_TEXTURE_2D, 0);
        return;
    }
    glGenTextures(1, &context.paletteTexture);
    glBindTexture(GL_TEXTURE_2D, context.paletteTexture);
    glTexImage2D(GL_TEXTURE_2D, 0, GLint(context.frameBufferFormat), GLsizei(width), 1, 0, GL_BGRA,
                 GL_UNSIGNED_BYTE, row.data());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_MIRRORED_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glBindTexture(GL_TEXTURE_2D, 0);
    context.paletteWidth = width;
}

// 640 x 480 pixels of the picture as a frame of the texture's size, the lowest row first: the nearest pixel
// for each. What a smaller picture lacks is blank.
void FillWebcamFrame(const Bitmap& picture, std::vector<uint32_t>& frame) {
    frame.resize(size_t(kWebcamWidth) * kWebcamHeight);
    const int columns = std::min(picture.width, kCameraWidth) * kWebcamWidth / kCameraWidth;
    int rowBelow = -1;
    for (int y = 0; y < kWebcamHeight; ++y) {
        const int fromBottom = y * kCameraHeight / kWebcamHeight;
        const int memoryRow = picture.bottomUp ? fromBottom : kCameraHeight - 1 - fromBottom;
        uint32_t* out = frame.data() + size_t(y) * kWebcamWidth;
        if (memoryRow >= picture.height) {
            std::fill_n(out, kWebcamWidth, 0u);
        } else if (memoryRow == rowBelow) {
            std::copy_n(out - kWebcamWidth, kWebcamWidth, out);
        } else {
            const uint8_t* in = picture.Row(memoryRow);
            for (int x = 0; x < columns; ++x)
                std::memcpy(out + x, in + size_t(x * kCameraWidth / kWebcamWidth) * 4, 4);
            std::fill_n(out + columns, kWebcamWidth - columns, 0u);
        }
        rowBelow = memoryRow;
    }
}

// A camera's picture is large and its way slow, so most frames keep the last one. The count goes on from run
// to run.
void FeedWebcam(RenderContext& context) {
    static std::atomic<uint32_t> frameCount{0};
    if (frameCount++ % kWebcamFrames != 0) return;
    const BitmapRef picture = LatestCameraPicture();
    if (!picture) return;
    FillWebcamFrame(*picture, context.webcamFrame);
    glBindTexture(GL_TEXTURE_2D, context.webcamTexture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, kWebcamWidth, kWebcamHeight, 0, GL_BGRA, GL_UNSIGNED_BYTE,
                 context.webcamFrame.data());
}

}  // namespace

void CreateLiveTexture(RenderContext& context, uint32_t kind) {
    switch (kind) {
        case kChannelKeyboard: {
            if (context.keyboardTexture != 0) return;
            ClearKeyboard();
            glGenTextures(1, &context.keyboardTexture);
            const std::array<uint8_t, kKeyCodes * kKeyRows> blank{};
            UploadSingleChannelRows(context.keyboardTexture, kKeyCodes, kKeyRows, blank.data());
            break;
        }
        case kChannelAudio: {
            if (context.audioTexture != 0) return;
            glGenTextures(1, &context.audioTexture);
            const AudioBlock silence{};
            UploadSingleChannelRows(context.audioTexture, kAudioColumns, kAudioRows, silence.data());
            break;
        }
        case kChannelWebcam: {
            if (context.webcamTexture != 0) return;
            OpenCamera();
            glGenTextures(1, &context.webcamTexture);
            glBindTexture(GL_TEXTURE_2D, context.webcamTexture);
            const std::vector<uint8_t> black(size_t(kWebcamWidth) * kWebcamHeight * 4);
            glTexImage2D(GL_TEXTURE_2D, 0, GLint(context.frameBufferFormat), kWebcamWidth, kWebcamHeight, 0,
                         GL_BGRA, GL_UNSIGNED_BYTE, black.data());
            break;
        }
        default:
            return;
    }
    ShowGLError();
}

void FeedLiveTextures(RenderContext& context, const SharedPalette* palette) {
    if (palette) FeedPalette(context, *palette);
    if (context.keyboardTexture != 0) {
        std::array<uint8_t, kKeyCodes * kKeyRows> rows;
        if (TakeKeyboardRows(rows)) {
            UploadSingleChannelRows(context.keyboardTexture, kKeyCodes, kKeyRows, rows.data());
        }
    }
    if (context.webcamTexture != 0) FeedWebcam(context);
    if (context.audioTexture != 0) {
        const AudioBlock block = LatestAudioBlock();
        UploadSingleChannelRows(context.audioTexture, kAudioColumns, kAudioRows, block.data());
    }
    ShowGLError();
}

}  // namespace pixelgrove
