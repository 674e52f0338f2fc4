// The lines of a channel's tooltip, by what the channel holds.
#include "ui/text/ChannelTooltip.h"

#include <gtest/gtest.h>

namespace pixelgrove {
namespace {

VolumeRef Volume(uint8_t sampleKind) {
    std::vector<uint8_t> bytes = {'B', 'I', 'N', 0, 4, 0, 0, 0, 5, 0, 0, 0, 6, 0, 0, 0, sampleKind, 0, 0, 0};
    return std::make_shared<const std::vector<uint8_t>>(std::move(bytes));
}

TEST(ChannelTooltip, TellsWhatIsThere) {
    ChannelInput unused;
    ChannelInput buffer;
    buffer.kind = kChannelBuffer;
    buffer.sourceStage = kStageBufferC;
    ChannelInput texture;
    texture.kind = kChannelTexture;
    texture.fileName = QStringLiteral("/a/100%1 <b>.png");
    texture.faces[0] = CreateBitmap(640, 480, 24, false);
    ChannelInput grey = texture;
    grey.faces[0] = CreateBitmap(3, 2, 8, false);
    ChannelInput cube = texture;
    cube.kind = kChannelCubemap;
    cube.faces[0] = CreateBitmap(8, 8, 32, false);
    ChannelInput volume;
    volume.kind = kChannelVolume;
    volume.volumeData = Volume(4);
    ChannelInput flatVolume = volume;
    flatVolume.volumeData = Volume(1);

    const struct {
        uint32_t stage, index;
        const ChannelInput& channel;
        const char* text;
    } rows[] = {
        {kStageImage, 0, unused, "Input to Image - Channel 0: Unused\n"},
        {kStageBufferA, 3, buffer, "Input to Buffer A - Channel 3: Buffer\nSource: Buffer C\n"},
        {kStageImage, 1, texture,
         "Input to Image - Channel 1: Texture\nFilename: /a/100%1 <b>.png\n"
         "Texture: 640 x 480 [ 3 channels, uint8 ]\n"},
        {kStageImage, 1, grey,
         "Input to Image - Channel 1: Texture\nFilename: /a/100%1 <b>.png\n"
         "Texture: 3 x 2 [ 1 channel, uint8 ]\n"},
        {kStageCubeA, 2, cube,
         "Input to Cube A - Channel 2: Cubemap\nFilename: /a/100%1 <b>.png\n"
         "Cubemap: 8 x 8 [ 4 channels, uint8 ]\n"},
        {kStageImage, 0, volume,
         "Input to Image - Channel 0: Volume\nVolume: 4 x 5 x 6 [ 4 channels, uint8 ]\n"},
        {kStageImage, 0, flatVolume,
         "Input to Image - Channel 0: Volume\nVolume: 4 x 5 x 6 [ 1 channel, uint8 ]\n"},
        {8, 0, unused, ""},
        {0, 4, unused, ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ChannelTooltip(row.stage, row.index, row.channel).toStdString(), row.text);
}

}  // namespace
}  // namespace pixelgrove
