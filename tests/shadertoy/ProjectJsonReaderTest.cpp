#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <sstream>

#include "shadertoy/ProjectJson.h"
#include "shadertoy/ProjectJsonSamples.h"

namespace pixelgrove {
namespace {

JsonObject Object(const QString& text) {
    const auto object = JsonObject::Parse(text);
    EXPECT_TRUE(object) << text.toStdString();
    return object.value_or(JsonObject());
}

// Renames a key, which hides its value from the reader.
QString WithoutKey(QString text, const char* key) {
    return text.replace(u'"' + QString::fromLatin1(key) + u'"', QStringLiteral("\"x\""));
}

// Kind, number, source stage, file, then filter and wrap in hexadecimal, vflip, srgb, internal format.
std::string Describe(const ChannelInput& channel) {
    std::ostringstream text;
    text << channel.kind << ' ' << channel.channelIndex << ' ' << channel.sourceStage << " '"
         << channel.fileName.toStdString() << "' " << std::hex << channel.filter << ' ' << channel.wrap << ' '
         << channel.vflip << channel.srgb << channel.internalFormat;
    return text.str();
}

TEST(ReadInput, KindAndSourceComeFromTypeAndId) {
    struct Row {
        const char* ctype;
        const char* id;
        uint32_t kind;
        int32_t sourceStage;
    };
    const Row rows[] = {{"texture", "257", 1, 0},       {"buffer", "256", 2, 0},
                        {"buffer", "257", 2, 2},        {"buffer", "259.9", 2, 4},
                        {"buffer", "260", 2, 5},        {"buffer", "261", 2, 0},
                        {"buffer", "1e300", 2, 0},      {"buffer", "-9223372036854775808", 2, 0},
                        {"buffer", "4294967553", 2, 0},  // 257 in its low 32 bits
                        {"cubemap", "41", 3, 6},        {"cubemap", "257", 4, 0},
                        {"volume", "41", 5, 0},         {"musicstream", "1", 8, 0},
                        {"music", "1", 8, 0},           {"mic", "1", 8, 0},
                        {"Texture", "1", 0, 0},         {"", "1", 0, 0}};
    for (const Row& row : rows) {
        const QString text = Json("{'ctype':'%1','channel':1,'id':%2,'src':'s'}")
                                 .arg(QString::fromLatin1(row.ctype), QString::fromLatin1(row.id));
        ChannelInput channel;
        ReadInputJson(Object(text), channel);
        EXPECT_EQ(channel.kind, row.kind) << row.ctype << " " << row.id;
        EXPECT_EQ(channel.sourceStage, row.sourceStage) << row.ctype << " " << row.id;
    }
}

TEST(ReadInput, FirstFailureEndsTheInputAndKeepsWhatWasRead) {
    const std::pair<const char*, const char*> rows[] = {
        // The missing key, in the order of reading.
        {"ctype", "0 0 0 '' 0 0 000"},       {"channel", "2 0 0 '' 0 0 000"},
        {"id", "2 3 0 '' 0 0 000"},          {"src", "2 3 4 '' 0 0 000"},
        {"sampler", "2 3 4 's' 0 0 000"},    {"filter", "2 3 4 's' 0 0 000"},
        {"wrap", "2 3 4 's' 2703 0 000"},    {"vflip", "2 3 4 's' 2703 2901 000"},
        {"srgb", "2 3 4 's' 2703 2901 100"}, {"internal", "2 3 4 's' 2703 2901 110"},
        {"none", "2 3 4 's' 2703 2901 111"},
    };
    const QString whole = Json(
        "{'ctype':'buffer','channel':3.9,'id':259,'src':'s','sampler':{'filter':'mipmap','wrap':'repeat',"
        "'vflip':'true','srgb':'true','internal':'byte'}}");
    for (const auto& [missing, expected] : rows) {
        ChannelInput channel;
        channel.kind = channel.filter = 2;  // to be cleared
        EXPECT_EQ(ReadInputJson(Object(WithoutKey(whole, missing)), channel), missing == std::string("none"));
        EXPECT_EQ(Describe(channel), expected) << missing;
    }
}

TEST(ReadInput, SamplerValuesAreExactStrings) {
    const std::pair<const char*, const char*> rows[] = {
        {"'filter':'Linear','wrap':'mirror','vflip':'True','srgb':'true','internal':'Byte'", "0 0 010"},
        {"'filter':'nearest','wrap':'clamp','vflip':true,'srgb':'true'", "2600 812f 000"}};
    const QString input = Json("{'ctype':'mic','channel':3,'id':1,'src':'','sampler':{%1}}");
    for (const auto& [sampler, expected] : rows) {
        ChannelInput channel;
        ReadInputJson(Object(input.arg(Json(sampler))), channel);
        EXPECT_EQ(Describe(channel), std::string("8 3 0 '' ") + expected);
    }
}

TEST(ReadPass, StageComesFromTypeAndName) {
    struct Row {
        const char* type;
        const char* name;
        uint32_t kind;
    };
    const Row rows[] = {{"common", "Buffer A", 1},   {"image", "Buffer A", 7},  {"buffer", "Buffer A", 2},
                        {"buffer", "Buf B", 3},      {"buffer", "Buf D", 5},    {"cubemap", "Cube A", 6},
                        {"cubemap", "Cubemap A", 6}, {"buffer", "buffer a", 0}, {"buffer", "Image", 0},
                        {"Image", "Image", 0},       {"sound", "Sound", 0}};
    for (const Row& row : rows) {
        ShaderStage stage;
        EXPECT_TRUE(ReadPassJson(Object(Pass(row.type, row.name, "\\u20ac\\u0081\\u4e2d\\u0000cut")), stage));
        EXPECT_EQ(stage.kind, row.kind) << row.type << " " << row.name;
        EXPECT_EQ(stage.source, QByteArrayView(row.type) == "sound" ? "" : "\x80\x81?") << row.type;
    }
}

TEST(ReadPass, InputsLandByChannelNumberAndOnlyThere) {
    // -1: refused.
    const std::pair<const char*, int> rows[] = {{"-0.9", 0}, {"3.9", 3},    {"null", 0},       {"-1", -1},
                                                {"4", -1},   {"1e300", -1}, {"4294967297", -1}};
    for (const auto& [number, slot] : rows) {
        const QString input = Json("{'ctype':'mic','channel':%1}").arg(QString::fromLatin1(number));
        ShaderStage stage;
        LoadWarnings warnings;
        ASSERT_TRUE(ReadPassJson(Object(Pass("image", "", "x", input)), stage, &warnings));
        EXPECT_EQ(!warnings.IsEmpty(), slot < 0 || number == std::string("null")) << number;
        for (int i = 0; i < kChannelCount; ++i)
            EXPECT_EQ(stage.channels[size_t(i)].kind, i == slot ? kChannelAudio : kChannelUnused) << number;
    }
}

TEST(ReadInfo, NumbersKeepTheirLow32Bits) {
    for (const auto& [number, value] :
         {std::pair{"3.99", 3u}, {"-1", 0xFFFFFFFFu}, {"4294967301", 5u}, {"-1e300", 0u}}) {
        const QString info = SampleInfo().replace(Json("'likes':3"), Json("'likes':") + Json(number));
        ShaderInfo result;
        LoadWarnings warnings;
        EXPECT_TRUE(ReadInfoJson(Json("{'Shader':{'info':%1}}").arg(info), result, &warnings)) << number;
        EXPECT_EQ(result.likes, value) << number;
        EXPECT_EQ(!warnings.IsEmpty(), value == 0) << number;
    }
}

TEST(ReadInfo, MissingKeyLeavesStringsEmptyAndEarlierNumbers) {
    // In the order of reading, with the sum of the numbers read before.
    const std::pair<const char*, uint32_t> rows[] = {
        {"id", 0},       {"date", 0},        {"viewed", 0},   {"name", 7},
        {"username", 7}, {"description", 7}, {"likes", 7},    {"published", 10},
        {"flags", 11},   {"usePreview", 43}, {"hasliked", 44}};
    for (const auto& [missing, sum] : rows) {
        ShaderInfo info;
        EXPECT_FALSE(
            ReadInfoJson(Json("{'Shader':{'info':%1}}").arg(WithoutKey(SampleInfo(), missing)), info))
            << missing;
        EXPECT_EQ(info.viewed + info.likes + info.published + info.flags + info.usePreview + info.hasliked,
                  sum)
            << missing;
        EXPECT_EQ(info.id + info.date + info.name + info.username + info.description + info.tags, QString());
    }
}

TEST(ReadProject, TextsOverTheirCapacityAreLeftEmptyAndReadingGoesOn) {
    ShaderProject project;
    project.stages[kStageImage].kind = kStageImage;
    ChannelInput& channel = project.stages[kStageImage].channels[0];
    channel.kind = kChannelVolume;
    ShaderInfo& info = project.info;
    const std::pair<QString*, int> rows[] = {
        // The field, and its capacity with the terminating zero.
        {&info.id, 20},           {&info.date, 32},  {&info.name, 128},       {&info.username, 64},
        {&info.description, 260}, {&info.tags, 256}, {&channel.fileName, 260}};
    for (const auto& [field, capacity] : rows) {
        info = ShaderInfo();
        channel.fileName.clear();
        for (const int length : {capacity - 1, capacity}) {
            SCOPED_TRACE(testing::Message() << capacity << ' ' << length);
            const bool fits = length < capacity;
            *field = QString(length, u'v');
            const QString text = WriteProjectJson(project);
            LoadWarnings warnings;
            ASSERT_TRUE(ReadProjectJson(text, project, &warnings));
            EXPECT_EQ(!warnings.IsEmpty(), !fits);
            EXPECT_EQ(field->size(), fits ? length : 0);
            EXPECT_EQ(channel.filter, gl::kLinear);
        }
    }
}

TEST(ReadProject, VersionIsReadAsALeadingFloat) {
    const std::pair<const char*, std::optional<float>> rows[] = {
        {"' \\t\\n 2.5'", 2.5f},  {"'-.5x'", -0.5f}, {"'1,5'", 1.0f}, {"'0x1.8p1'", 3.0f},
        {"'InFinity'", INFINITY}, {"' '", {}},       {"'v1'", {}},    {"'1e39'", {}},
        {"'1e-60'", {}},          {"0.1", {}}};
    const QString passes = u'[' + Pass("image", "", "x") + u']';
    for (const auto& [ver, version] : rows) {
        ShaderProject project;
        EXPECT_EQ(ReadProjectJson(ProjectText(passes, Json(ver)), project), version.has_value()) << ver;
        EXPECT_EQ(project.version, version.value_or(0.0f)) << ver;
        EXPECT_EQ(project.stages[kStageImage].kind, version ? kStageImage : kStageNone) << ver;
    }
}

TEST(ReadProject, LaterPassesReplaceEarlierOnesAndOthersAreDiscarded) {
    const QStringList passes = {Pass("buffer", "Buffer A", "first", Json("{'ctype':'mic'}")),
                                Pass("sound", "Sound", "never"),
                                Pass("buffer", "Buf A", "second"),
                                Pass("buffer", "Buf A", "with a broken input", QStringLiteral("1")),
                                Json("{'type':'buffer','code':'no name','inputs':[]}"),
                                Json("{'type':'image','code':'no inputs'}"),
                                QStringLiteral("{}")};
    ShaderProject project;
    project.stages[kStageCubeA].kind = kStageCubeA;  // left from before
    ASSERT_TRUE(ReadProjectJson(ProjectText(u'[' + passes.join(u',') + u']'), project));
    EXPECT_EQ(project.stages[kStageBufferA].source, QByteArray("second"));
    EXPECT_EQ(project.stages[kStageBufferA].channels[0].kind, kChannelUnused);
    for (uint32_t id = 0; id < uint32_t(kStageCount); ++id) {
        EXPECT_EQ(project.stages[id].kind, id == kStageBufferA ? id : 0) << id;
    }
}

TEST(ReadProject, WhatIsLeftOutIsSaidInOneLineEach) {
    const auto image = [](const char* inputs) { return Pass("image", "Image", "x", Json(inputs)); };
    const QString longName(300, u'n');
    const std::pair<QString, const char*> rows[] = {
        {image("{'ctype':'mic','channel':1},{'ctype':'mic','channel':0,'id':3,'src':'s'}"), ""},
        {image("{'ctype':'mic','channel':7}"),
         "Image: an input for channel 7 was left out; there are channels 0 to 3."},
        {image("{'channel':2}"), "Image: an input without a kind was left out."},
        {image("{'ctype':'mi\\nc','channel':2}"),
         "Image: the kind \"mi?c\" of channel 2 is unknown, and its input was left out."},
        {image("{'ctype':'mic','channel':2},{'ctype':'keyboard','channel':2}"),
         "Image: channel 2 has more than one input; the last one counts."},
        {image("{'ctype':'mic','channel':2,'src':'lost'}"),
         "Image: the input of channel 2 is damaged and was read in part."},
        {image("{'ctype':'mic','channel':2,'id':1,'src':'%1'}").arg(longName),
         "Image: the file name of channel 2 is too long (300 characters, 259 fit) and was left out."},
        {image("1"), "Image: the stage was left out, as its inputs are missing or damaged."},
        {Json("{'type':'image','inputs':[]}"), "Image: the stage was left out, as it has no code."},
        {Pass("image", "", "a\\u0000b"), "Image: the text behind a zero character was left out."},
        {image("") + u',' + image(""), "Image: there is more than one such pass; the last one counts."},
        {Pass("buffer", "Buffer E", "x", Json("{'channel':9}")),
         "The pass \"Buffer E\" was left out; no stage has that name."},
        {Json("{'type':'buffer'}"), "A buffer pass without a name was left out."},
        {Pass("vertex", "", "x"), "A pass of the unknown type \"vertex\" was left out."},
        {Pass("sound", "", "x"), "The sound pass was left out; there is no such stage here."},
        {QStringLiteral("{}"), "A pass without a type was left out."},
    };
    const auto warningsOf = [](const QString& passes, const QString& info) {
        LoadWarnings warnings;
        ShaderProject project;
        EXPECT_TRUE(
            ReadProjectJson(ProjectText(u'[' + passes + u']', Json("'1'"), info), project, &warnings));
        return warnings.Lines();
    };
    for (const auto& [passes, sentence] : rows)
        EXPECT_EQ(warningsOf(passes, SampleInfo()).join(u'|').toStdString(), sentence)
            << passes.toStdString();
    EXPECT_TRUE(warningsOf({}, QStringLiteral("{}")).isEmpty());
    EXPECT_EQ(warningsOf({}, WithoutKey(SampleInfo(), "likes")).join(u'|').toStdString(),
              "The info of the project has gaps; its name and other texts were left out.");

    QString passes = QStringLiteral("{},{}");
    for (int i = 0; i < 100; ++i)
        passes += u',' + Pass(QByteArray::number(i), "", "x");
    const QStringList many = warningsOf(passes, SampleInfo());
    ASSERT_EQ(many.size(), LoadWarnings::kMaxLines + 1);
    EXPECT_EQ(many.last(), QStringLiteral("And %1 more like these.").arg(102 - LoadWarnings::kMaxLines));
}

}  // namespace
}  // namespace pixelgrove
