#include <gtest/gtest.h>

#include <cmath>

#include "shadertoy/ProjectJson.h"
#include "shadertoy/ProjectJsonSamples.h"

namespace pixelgrove {
namespace {

JsonObject Object(const QString& text) {
    const auto object = JsonObject::Parse(text);
    EXPECT_TRUE(object) << text.toStdString();
    return object.value_or(JsonObject());
}

struct InputRow {
    const char* text;
    bool isWhole;
    ChannelInput expected;
};

void ExpectSame(const ChannelInput& actual, const ChannelInput& expected, const char* label) {
    EXPECT_EQ(actual.kind, expected.kind) << label;
    EXPECT_EQ(actual.wrap, expected.wrap) << label;
    EXPECT_EQ(actual.filter, expected.filter) << label;
    EXPECT_EQ(actual.vflip, expected.vflip) << label;
    EXPECT_EQ(actual.srgb, expected.srgb) << label;
    EXPECT_EQ(actual.internalFormat, expected.internalFormat) << label;
    EXPECT_EQ(actual.sourceStage, expected.sourceStage) << label;
    EXPECT_EQ(actual.channelIndex, expected.channelIndex) << label;
    EXPECT_EQ(actual.fileName, expected.fileName) << label;
}

TEST(ReadInput, KindAndSourceComeFromTypeAndId) {
    struct Row {
        const char* ctype;
        const char* id;
        uint32_t kind;
        int32_t sourceStage;
    };
    const Row rows[] = {
        {"texture", "257", kChannelTexture, 0},
        {"buffer", "256", kChannelBuffer, 0},
        {"buffer", "257", kChannelBuffer, kStageBufferA},
        {"buffer", "258", kChannelBuffer, kStageBufferB},
        {"buffer", "259.9", kChannelBuffer, kStageBufferC},
        {"buffer", "260", kChannelBuffer, kStageBufferD},
        {"buffer", "261", kChannelBuffer, 0},
        {"buffer", "41", kChannelBuffer, 0},
        {"buffer", "1e300", kChannelBuffer, 0},
        {"buffer", "-1e300", kChannelBuffer, 0},
        {"buffer", "4294967553", kChannelBuffer, 0},  // 257 in its low 32 bits
        {"buffer", "-9223372036854775808", kChannelBuffer, 0},
        {"cubemap", "41", kChannelCubeA, kStageCubeA},
        {"cubemap", "3", kChannelCubemap, 0},
        {"cubemap", "257", kChannelCubemap, 0},
        {"volume", "41", kChannelVolume, 0},
        {"keyboard", "33", kChannelKeyboard, 0},
        {"webcam", "1", kChannelWebcam, 0},
        {"audio", "1", kChannelAudio, 0},
        {"musicstream", "1", kChannelAudio, 0},
        {"music", "1", kChannelAudio, 0},
        {"mic", "1", kChannelAudio, 0},
        {"Texture", "1", kChannelUnused, 0},
        {"video", "41", kChannelUnused, 0},
        {"", "1", kChannelUnused, 0},
    };
    for (const Row& row : rows) {
        const QString text = QStringLiteral("{\"ctype\":\"%1\",\"channel\":1,\"id\":%2,\"src\":\"s\"}")
                                 .arg(QString::fromLatin1(row.ctype), QString::fromLatin1(row.id));
        ChannelInput channel;
        ReadInputJson(Object(text), channel);
        EXPECT_EQ(channel.kind, row.kind) << row.ctype << " " << row.id;
        EXPECT_EQ(channel.sourceStage, row.sourceStage) << row.ctype << " " << row.id;
        EXPECT_EQ(channel.channelIndex, 1u);
        EXPECT_EQ(channel.fileName, QStringLiteral("s"));
    }
}

TEST(ReadInput, FirstFailureEndsTheInputAndKeepsWhatWasRead) {
    const QString s = QStringLiteral("s");
    const auto channel = [](uint32_t kind, uint32_t index, const QString& file, uint32_t filter = 0,
                            uint32_t wrap = 0, uint32_t vflip = 0, uint32_t srgb = 0, uint32_t internal = 0) {
        ChannelInput result;
        result.kind = kind;
        result.channelIndex = index;
        result.fileName = file;
        result.filter = filter;
        result.wrap = wrap;
        result.vflip = vflip;
        result.srgb = srgb;
        result.internalFormat = internal;
        result.sourceStage = kind == kChannelBuffer ? int32_t(kStageBufferA) : 0;
        return result;
    };
    const uint32_t b = kChannelBuffer;
    const InputRow rows[] = {
        {"{'channel':1,'id':257,'src':'s'}", false, channel(0, 0, {})},
        {"{'ctype':1,'channel':1,'id':257}", false, channel(0, 0, {})},
        {"{'ctype':'volume','id':257,'src':'s'}", false, channel(kChannelVolume, 0, {})},
        {"{'ctype':'volume','channel':'1','id':1}", false, channel(kChannelVolume, 0, {})},
        {"{'ctype':'volume','channel':3,'src':'s'}", false, channel(kChannelVolume, 3, {})},
        {"{'ctype':'buffer','channel':3,'id':257}", false, channel(b, 3, {})},
        {"{'ctype':'buffer','channel':3.9,'id':257,'src':'s'}", false, channel(b, 3, s)},
        {"{'ctype':'buffer','channel':3,'id':257,'src':'s','sampler':[]}", false, channel(b, 3, s)},
        {"{'ctype':'buffer','channel':3,'id':257,'src':'s','sampler':{'wrap':'clamp'}}", false,
         channel(b, 3, s)},
        {"{'ctype':'buffer','channel':3,'id':257,'src':'s','sampler':{'filter':'linear','vflip':'true'}}",
         false, channel(b, 3, s, gl::kLinear)},
        {"{'ctype':'buffer','channel':3,'id':257,'src':'s','sampler':{'filter':'nearest','wrap':'clamp',"
         "'vflip':true,'srgb':'true'}}",
         false, channel(b, 3, s, gl::kNearest, gl::kClampToEdge)},
        {"{'ctype':'buffer','channel':3,'id':257,'src':'s','sampler':{'filter':'mipmap','wrap':'repeat',"
         "'vflip':'true','internal':'byte'}}",
         false, channel(b, 3, s, gl::kLinearMipmapLinear, gl::kRepeat, 1)},
        {"{'ctype':'buffer','channel':3,'id':257,'src':'s','sampler':{'filter':'Linear','wrap':'mirror',"
         "'vflip':'True','srgb':'1'}}",
         false, channel(b, 3, s)},
        {"{'ctype':'buffer','channel':3,'id':257,'src':'s','sampler':{'filter':'mipmap','wrap':'repeat',"
         "'vflip':'false','srgb':'true','internal':'float'}}",
         true, channel(b, 3, s, gl::kLinearMipmapLinear, gl::kRepeat, 0, 1)},
        {"{'ctype':'buffer','channel':3,'id':257,'src':'s','sampler':{'filter':'mipmap','wrap':'repeat',"
         "'vflip':'true','srgb':'true','internal':'byte'}}",
         true, channel(b, 3, s, gl::kLinearMipmapLinear, gl::kRepeat, 1, 1, 1)},
    };
    for (const InputRow& row : rows) {
        ChannelInput result = channel(kChannelAudio, 2, QStringLiteral("old"), 1, 1, 1, 1, 1);
        EXPECT_EQ(ReadInputJson(Object(Json(row.text)), result), row.isWhole) << row.text;
        ExpectSame(result, row.expected, row.text);
    }
}

TEST(ReadPass, StageComesFromTypeAndName) {
    struct Row {
        const char* type;
        const char* name;
        uint32_t kind;
    };
    const Row rows[] = {
        {"common", "Buffer A", kStageCommon},  {"image", "Buffer A", kStageImage},
        {"buffer", "Buffer A", kStageBufferA}, {"buffer", "Buf B", kStageBufferB},
        {"buffer", "Buffer C", kStageBufferC}, {"buffer", "Buf D", kStageBufferD},
        {"cubemap", "Cube A", kStageCubeA},    {"cubemap", "Cubemap A", kStageCubeA},
        {"buffer", "Buffer E", kStageNone},    {"buffer", "buffer a", kStageNone},
        {"buffer", "Image", kStageNone},       {"cubemap", "Cube B", kStageNone},
        {"Image", "Image", kStageNone},        {"sound", "Sound", kStageNone},
    };
    for (const Row& row : rows) {
        ShaderStage stage;
        EXPECT_TRUE(ReadPassJson(Object(Pass(row.type, row.name, "x")), stage));
        EXPECT_EQ(stage.kind, row.kind) << row.type << " " << row.name;
        EXPECT_EQ(stage.source, QByteArray(QByteArrayView(row.type) == "sound" ? "" : "x")) << row.type;
    }
}

TEST(ReadPass, IsDroppedWithoutItsKeys) {
    for (const char* text :
         {"{'name':'Image','code':'x','inputs':[]}", "{'type':7,'code':'x','inputs':[]}",
          "{'type':'buffer','code':'x','inputs':[]}", "{'type':'cubemap','name':1,'code':'x','inputs':[]}",
          "{'type':'image','inputs':[]}", "{'type':'image','code':null,'inputs':[]}",
          "{'type':'image','code':'x'}", "{'type':'image','code':'x','inputs':{}}",
          "{'type':'image','code':'x','inputs':[1]}"}) {
        ShaderStage stage;
        EXPECT_FALSE(ReadPassJson(Object(Json(text)), stage)) << text;
    }
    ShaderStage stage;
    EXPECT_TRUE(ReadPassJson(Object(Json("{'type':'sound'}")), stage));
    EXPECT_TRUE(ReadPassJson(Object(Json("{'type':'image','code':'','inputs':[]}")), stage));
}

TEST(ReadPass, SourceIsHeldInTheCodePage) {
    ShaderStage stage;
    ASSERT_TRUE(
        ReadPassJson(Object(Pass("image", "", "\\u20ac\\u0081\\r\\n\\t\\u4e2d\\ud83d\\ude00|")), stage));
    EXPECT_EQ(stage.source, QByteArray("\x80\x81\r\n\t???|"));
    ASSERT_TRUE(ReadPassJson(Object(Pass("image", "", "ab\\u0000cd")), stage));
    EXPECT_EQ(stage.source, QByteArray("ab"));
}

TEST(ReadPass, InputsLandByChannelNumberAndOnlyThere) {
    const auto input = [](const char* ctype, const char* channel) {
        return QStringLiteral("{\"ctype\":\"%1\",\"channel\":%2}")
            .arg(QString::fromLatin1(ctype), QString::fromLatin1(channel));
    };
    ShaderStage stage;
    bool refused = false;
    const QStringList good = {input("texture", "0"), input("keyboard", "1"), input("webcam", "3"),
                              input("volume", "3"), input("audio", "-0.9")};
    ASSERT_TRUE(ReadPassJson(Object(Pass("image", "", "x", good.join(u','))), stage, &refused));
    EXPECT_FALSE(refused);
    const uint32_t kinds[] = {kChannelAudio, kChannelKeyboard, kChannelUnused, kChannelVolume};
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(stage.channels[i].kind, kinds[i]) << i;
    }

    for (const char* channel : {"-1", "4", "255", "2147483648", "4294967296", "4294967297", "1e300", "-1e300",
                                "9223372036854775807", "1.8446744073709551616e19"}) {
        const QString inputs = input("texture", "0") + u',' + input("webcam", channel);
        refused = false;
        ASSERT_TRUE(ReadPassJson(Object(Pass("image", "", "x", inputs)), stage, &refused));
        EXPECT_TRUE(refused) << channel;
        EXPECT_EQ(stage.channels[0].kind, kChannelTexture) << channel;
        for (const ChannelInput& other : stage.channels) {
            EXPECT_NE(other.kind, kChannelWebcam) << channel;
        }
    }
    // One whose channel can't be read takes channel 0.
    ASSERT_TRUE(ReadPassJson(
        Object(Pass("image", "", "x", input("texture", "0") + u',' + input("webcam", "null"))), stage));
    EXPECT_EQ(stage.channels[0].kind, kChannelWebcam);
}

TEST(ReadInfo, MissingKeyLeavesStringsEmptyAndEarlierNumbers) {
    // In the order of reading; after each, the sum of the numbers read so far.
    const char* const keys[] = {"id",    "date",      "viewed", "name",       "username", "description",
                                "likes", "published", "flags",  "usePreview", "hasliked"};
    const char* const values[] = {"'i'", "'d'", "1", "'n'", "'u'", "'t'", "2", "4", "8", "16", "32"};
    const uint32_t sums[] = {0, 0, 0, 1, 1, 1, 1, 3, 7, 15, 31};
    for (size_t broken = 0; broken < std::size(keys); ++broken) {
        for (const char* replacement : {"", "[]"}) {
            QString members = QStringLiteral("\"tags\":[\"a\"]");
            for (size_t i = 0; i < std::size(keys); ++i) {
                const char* value = i == broken ? replacement : values[i];
                if (*value) members += Json(",'%1':%2").arg(QString::fromLatin1(keys[i]), Json(value));
            }
            ShaderInfo info;
            EXPECT_FALSE(ReadInfoJson(Json("{'Shader':{'info':{%1}}}").arg(members), info)) << keys[broken];
            EXPECT_EQ(
                info.viewed + info.likes + info.published + info.flags + info.usePreview + info.hasliked,
                sums[broken])
                << keys[broken];
            EXPECT_EQ(info.id + info.date + info.name + info.username + info.description + info.tags,
                      QString());
        }
    }
}

TEST(ReadInfo, TagsAreJoinedAndComeLast) {
    struct Row {
        const char* tags;
        bool isRead;
        const char* joined;
    };
    const Row rows[] = {
        {"[]", true, ""},         {"['a']", true, "a"},        {"['a','b',' c']", true, "a, b,  c"},
        {"['a,b']", true, "a,b"}, {"['a',1,'b']", false, "a"}, {"'a'", false, ""}};
    for (const Row& row : rows) {
        QString info = SampleInfo();
        info.replace(Json("['sea','blue']"), Json(row.tags));
        ShaderInfo result;
        EXPECT_EQ(ReadInfoJson(Json("{'Shader':{'info':%1}}").arg(info), result), row.isRead) << row.tags;
        EXPECT_EQ(result.tags, QString::fromLatin1(row.joined)) << row.tags;
        EXPECT_EQ(result.description, QStringLiteral("Deep water"));
        EXPECT_EQ(result.hasliked, 1u);
    }
}

TEST(ReadInfo, NumbersKeepTheirLow32Bits) {
    const std::pair<const char*, uint32_t> rows[] = {{"3.99", 3},
                                                     {"-1", 0xFFFFFFFFu},
                                                     {"-0.5", 0},
                                                     {"4294967295", 0xFFFFFFFFu},
                                                     {"4294967301", 5},
                                                     {"1e300", 0},
                                                     {"-1e300", 0},
                                                     {"9223372036854775808", 0},
                                                     {"-9223372036854775808", 0}};
    for (const auto& [number, expected] : rows) {
        QString info = SampleInfo();
        info.replace(Json("'likes':3"), Json("'likes':") + QString::fromLatin1(number));
        ShaderInfo result;
        bool refused = false;
        EXPECT_TRUE(ReadInfoJson(Json("{'Shader':{'info':%1}}").arg(info), result, &refused)) << number;
        EXPECT_EQ(result.likes, expected) << number;
        const QByteArrayView text(number);
        EXPECT_EQ(refused, text.contains('e') || text == "9223372036854775808") << number;
    }
}

TEST(ReadProject, TextsOverTheirCapacityAreLeftEmpty) {
    struct Row {
        const char* key;
        int capacity;  // terminating zero included
        QString ShaderInfo::*field;
    };
    const Row rows[] = {{"id", 20, &ShaderInfo::id},
                        {"date", 32, &ShaderInfo::date},
                        {"name", 128, &ShaderInfo::name},
                        {"username", 64, &ShaderInfo::username},
                        {"description", 260, &ShaderInfo::description},
                        {"tags", 256, &ShaderInfo::tags}};
    for (const Row& row : rows) {
        for (const int length : {row.capacity - 1, row.capacity, 100'000}) {
            const bool fits = length < row.capacity;
            const QString value(length, u'v');
            JsonObject info = *JsonObject::Parse(SampleInfo());
            if (row.field == &ShaderInfo::tags) {
                JsonArray tags;  // "vv..., ww" has the length asked for
                tags.Append(value.left(length - 4));
                tags.Append(QStringLiteral("ww"));
                info.SetNamedValue(QStringLiteral("tags"), tags);
            } else {
                info.SetNamedValue(QString::fromLatin1(row.key), value);
            }
            ShaderProject project;
            bool refused = !fits;
            ASSERT_TRUE(ReadProjectJson(ProjectText(QStringLiteral("[%1]").arg(Pass("image", "", "x")),
                                                    QStringLiteral("\"1\""), info.Stringify()),
                                        project, &refused));
            EXPECT_EQ(refused, !fits) << row.key << " " << length;
            EXPECT_EQ((project.info.*row.field).size(), fits ? length : 0) << row.key << " " << length;
            EXPECT_EQ(project.info.viewed, 7u);
            EXPECT_EQ(project.info.hasliked, 1u);
            EXPECT_EQ(project.info.id.isEmpty(), row.field == &ShaderInfo::id && !fits);
            EXPECT_EQ(project.stages[kStageImage].kind, kStageImage);
        }
    }
    for (const int length : {259, 260}) {
        JsonObject input =
            Object(Json("{'ctype':'volume','channel':1,'id':1,'sampler':{'filter':'nearest'}}"));
        input.SetNamedValue(QStringLiteral("src"), QString(length, u'f'));
        ChannelInput channel;
        bool refused = false;
        ReadInputJson(input, channel, &refused);
        EXPECT_EQ(channel.fileName.size(), length < 260 ? length : 0);
        EXPECT_EQ(refused, length >= 260);
        EXPECT_EQ(channel.filter, gl::kNearest);  // reading went on
    }
}

TEST(ReadProject, VersionIsReadAsALeadingFloat) {
    struct Row {
        const char* ver;  // as JSON
        bool isRead;
        float version;
    };
    const Row rows[] = {
        {"'0.1'", true, 0.1f}, {"' \\t\\n 2.5'", true, 2.5f},
        {"'3.'", true, 3.0f},  {"'-.5x'", true, -0.5f},
        {"'1,5'", true, 1.0f}, {"'1e2 and more'", true, 100.0f},
        {"'1e'", true, 1.0f},  {"'0x1.8p1'", true, 3.0f},
        {"'0xg'", true, 0.0f}, {"'InFinity'", true, INFINITY},
        {"''", false, 0},      {"' '", false, 0},
        {"'v1'", false, 0},    {"'.e1'", false, 0},
        {"'1e39'", false, 0},  {"'-1e9999999999'", false, 0},
        {"'1e-60'", false, 0}, {"0.1", false, 0},
        {"null", false, 0},
    };
    for (const Row& row : rows) {
        ShaderProject project;
        const QString passes = QStringLiteral("[%1]").arg(Pass("image", "", "x"));
        EXPECT_EQ(ReadProjectJson(ProjectText(passes, Json(row.ver)), project), row.isRead) << row.ver;
        EXPECT_EQ(project.version, row.version) << row.ver;
        EXPECT_EQ(project.stages[kStageImage].kind, row.isRead ? kStageImage : kStageNone) << row.ver;
    }
    ShaderProject project;
    EXPECT_TRUE(ReadProjectJson(ProjectText(QStringLiteral("[]"), Json("'nan'")), project));
    EXPECT_TRUE(std::isnan(project.version));
}

TEST(ReadProject, ReadsTheWholeAndLaterPassesReplaceEarlierOnes) {
    ShaderProject project;
    project.stages[kStageCubeA].kind = kStageCubeA;  // left from before
    ASSERT_TRUE(ReadProjectJson(SampleProject(), project));
    EXPECT_EQ(project.info.id, QStringLiteral("AbCd12"));
    EXPECT_EQ(project.info.date, QStringLiteral("1700000000"));
    EXPECT_EQ(project.info.username, QStringLiteral("ada"));
    EXPECT_EQ(project.info.tags, QStringLiteral("sea, blue"));
    EXPECT_EQ(project.info.flags, 32u);
    EXPECT_EQ(project.stages[kStageImage].source, QByteArray("void main(){}"));
    EXPECT_EQ(project.stages[kStageImage].channels[2].sourceStage, int32_t(kStageBufferA));
    EXPECT_EQ(project.stages[kStageBufferA].source, QByteArray("\xe9\n"));
    EXPECT_EQ(project.stages[kStageCubeA].kind, kStageNone);

    const QStringList passes = {Pass("buffer", "Buffer A", "first", QStringLiteral("{\"ctype\":\"mic\"}")),
                                Pass("sound", "Sound", "never"), Pass("novelty", "", "discarded"),
                                Pass("buffer", "Buf A", "second")};
    ASSERT_TRUE(ReadProjectJson(ProjectText(u'[' + passes.join(u',') + u']'), project));
    EXPECT_EQ(project.stages[kStageBufferA].source, QByteArray("second"));
    EXPECT_EQ(project.stages[kStageBufferA].channels[0].kind, kChannelUnused);
    for (const ShaderStage& stage : project.stages) {
        EXPECT_FALSE(stage.source.contains("never"));
    }
    EXPECT_EQ(project.stages[kStageNone].kind, kStageNone);
}

TEST(ReadProject, FailureKeepsWhatWasReadBefore) {
    struct Row {
        QString text;
        bool isRead;
        bool hasVersion, hasInfo, hasImage;
    };
    const QString ok = Pass("image", "", "x");
    const QString one = QStringLiteral("\"1\"");
    const Row rows[] = {
        {QStringLiteral("{}"), false, false, false, false},
        {Json("{'Shader':[]}"), false, false, false, false},
        {Json("{'shader':{}}"), false, false, false, false},
        {Json("{'Shader':{'ver':'1','renderpass':[]}}"), false, true, false, false},
        {ProjectText(u'[' + ok + u']', one, QStringLiteral("[]")), false, true, false, false},
        {ProjectText(u'[' + ok + u']', one, QStringLiteral("{}")), true, true, false, true},
        {ProjectText(QStringLiteral("{}"), one), false, true, true, false},
        {ProjectText(u'[' + ok + QStringLiteral(",1,") + Pass("common", "", "y") + u']', one), false, true,
         true, true},
        {ProjectText(QStringLiteral("[{},") + ok + u']', one), true, true, true, true},
    };
    for (const Row& row : rows) {
        ShaderProject project;
        EXPECT_EQ(ReadProjectJson(row.text, project), row.isRead) << row.text.toStdString();
        EXPECT_EQ(project.version, row.hasVersion ? 1.0f : 0.0f) << row.text.toStdString();
        EXPECT_EQ(project.info.viewed, row.hasInfo ? 7u : 0u) << row.text.toStdString();
        EXPECT_EQ(project.stages[kStageImage].kind, row.hasImage ? kStageImage : kStageNone);
        EXPECT_EQ(project.stages[kStageCommon].kind, kStageNone);
    }
}

TEST(ReadProject, TextCutOffAnywhereIsRefused) {
    const QString text = SampleProject();
    for (qsizetype length = 0; length < text.size(); ++length) {
        ShaderProject project;
        EXPECT_FALSE(ReadProjectJson(text.left(length), project)) << length;
        // One unit changed: whatever comes of it, it must not fault.
        QString damaged = text;
        damaged[length] = damaged[length] == u'"' ? u'7' : u'"';
        ReadProjectJson(damaged, project);
    }
}

}  // namespace
}  // namespace pixelgrove
