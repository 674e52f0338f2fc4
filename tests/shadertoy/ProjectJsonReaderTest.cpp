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

// Kind, number, source stage, file, then filter and wrap in hexadecimal, vflip, srgb, internal format.
std::string Describe(const ChannelInput& channel) {
    return QStringLiteral("%1 %2 %3 '%4' %5 %6 %7 %8 %9")
        .arg(channel.kind)
        .arg(channel.channelIndex)
        .arg(channel.sourceStage)
        .arg(channel.fileName)
        .arg(channel.filter, 0, 16)
        .arg(channel.wrap, 0, 16)
        .arg(channel.vflip)
        .arg(channel.srgb)
        .arg(channel.internalFormat)
        .toStdString();
}

TEST(ReadInput, KindAndSourceComeFromTypeAndId) {
    struct Row {
        const char* ctype;
        const char* id;
        uint32_t kind;
        int32_t sourceStage;
    };
    const Row rows[] = {{"texture", "257", 1, 0},
                        {"buffer", "256", 2, 0},
                        {"buffer", "257", 2, 2},
                        {"buffer", "258", 2, 3},
                        {"buffer", "259.9", 2, 4},
                        {"buffer", "260", 2, 5},
                        {"buffer", "261", 2, 0},
                        {"buffer", "41", 2, 0},
                        {"buffer", "1e300", 2, 0},
                        {"buffer", "-1e300", 2, 0},
                        {"buffer", "4294967553", 2, 0},  // 257 in its low 32 bits
                        {"buffer", "-9223372036854775808", 2, 0},
                        {"cubemap", "41", 3, 6},
                        {"cubemap", "3", 4, 0},
                        {"cubemap", "257", 4, 0},
                        {"volume", "41", 5, 0},
                        {"keyboard", "33", 6, 0},
                        {"webcam", "1", 7, 0},
                        {"audio", "1", 8, 0},
                        {"musicstream", "1", 8, 0},
                        {"music", "1", 8, 0},
                        {"mic", "1", 8, 0},
                        {"Texture", "1", 0, 0},
                        {"video", "41", 0, 0},
                        {"", "1", 0, 0}};
    for (const Row& row : rows) {
        const QString text = Json("{'ctype':'%1','channel':1,'id':%2,'src':'s'}")
                                 .arg(QString::fromLatin1(row.ctype), QString::fromLatin1(row.id));
        ChannelInput channel;
        ReadInputJson(Object(text), channel);
        EXPECT_EQ(channel.kind, row.kind) << row.ctype << " " << row.id;
        EXPECT_EQ(channel.sourceStage, row.sourceStage) << row.ctype << " " << row.id;
        EXPECT_EQ(channel.fileName, QStringLiteral("s"));
    }
}

TEST(ReadInput, FirstFailureEndsTheInputAndKeepsWhatWasRead) {
    struct Row {
        const char* text;
        bool isWhole;
        const char* expected;
    };
    const Row rows[] = {
        {"{'channel':1,'id':257,'src':'s'}", false, "0 0 0 '' 0 0 0 0 0"},
        {"{'ctype':1,'channel':1,'id':257}", false, "0 0 0 '' 0 0 0 0 0"},
        {"{'ctype':'volume','channel':'1','id':1}", false, "5 0 0 '' 0 0 0 0 0"},
        {"{'ctype':'cubemap','channel':3,'src':'s'}", false, "4 3 0 '' 0 0 0 0 0"},
        {"{'ctype':'buffer','channel':3.9,'id':257}", false, "2 3 2 '' 0 0 0 0 0"},
        {"{'ctype':'mic','channel':3,'id':1,'src':'s','sampler':[]}", false, "8 3 0 's' 0 0 0 0 0"},
        {"{'ctype':'mic','channel':3,'id':1,'src':'s','sampler':{'wrap':'clamp'}}", false,
         "8 3 0 's' 0 0 0 0 0"},
        {"{'ctype':'mic','channel':3,'id':1,'src':'s','sampler':{'filter':'linear','vflip':'true'}}", false,
         "8 3 0 's' 2601 0 0 0 0"},
        {"{'ctype':'mic','channel':3,'id':1,'src':'','sampler':{'filter':'nearest','wrap':'clamp',"
         "'vflip':true,'srgb':'true'}}",
         false, "8 3 0 '' 2600 812f 0 0 0"},
        {"{'ctype':'mic','channel':3,'id':1,'src':'','sampler':{'filter':'mipmap','wrap':'repeat',"
         "'vflip':'true','internal':'byte'}}",
         false, "8 3 0 '' 2703 2901 1 0 0"},
        {"{'ctype':'mic','channel':3,'id':1,'src':'','sampler':{'filter':'Linear','wrap':'mirror',"
         "'vflip':'True','srgb':'true'}}",
         false, "8 3 0 '' 0 0 0 1 0"},
        {"{'ctype':'mic','channel':3,'id':1,'src':'','sampler':{'filter':'mipmap','wrap':'repeat',"
         "'vflip':'false','srgb':'1','internal':'float'}}",
         true, "8 3 0 '' 2703 2901 0 0 0"},
        {"{'ctype':'mic','channel':3,'id':1,'src':'','sampler':{'filter':'mipmap','wrap':'repeat',"
         "'vflip':'true','srgb':'true','internal':'byte'}}",
         true, "8 3 0 '' 2703 2901 1 1 1"}};
    for (const Row& row : rows) {
        ChannelInput channel;
        channel.kind = channel.channelIndex = channel.filter = channel.internalFormat = 2;  // to be cleared
        EXPECT_EQ(ReadInputJson(Object(Json(row.text)), channel), row.isWhole) << row.text;
        EXPECT_EQ(Describe(channel), row.expected) << row.text;
    }
}

TEST(ReadPass, StageComesFromTypeAndName) {
    struct Row {
        const char* type;
        const char* name;
        uint32_t kind;
    };
    const Row rows[] = {{"common", "Buffer A", 1}, {"image", "Buffer A", 7},    {"buffer", "Buffer A", 2},
                        {"buffer", "Buf B", 3},    {"buffer", "Buffer C", 4},   {"buffer", "Buf D", 5},
                        {"cubemap", "Cube A", 6},  {"cubemap", "Cubemap A", 6}, {"buffer", "Buffer E", 0},
                        {"buffer", "buffer a", 0}, {"buffer", "Image", 0},      {"Image", "Image", 0},
                        {"sound", "Sound", 0}};
    for (const Row& row : rows) {
        ShaderStage stage;
        EXPECT_TRUE(ReadPassJson(Object(Pass(row.type, row.name, "x")), stage));
        EXPECT_EQ(stage.kind, row.kind) << row.type << " " << row.name;
        EXPECT_EQ(stage.source.isEmpty(), QByteArrayView(row.type) == "sound") << row.type;
    }
}

TEST(ReadPass, IsDroppedWithoutItsKeys) {
    const std::pair<const char*, bool> rows[] = {
        {"{'name':'Image','code':'x','inputs':[]}", false},
        {"{'type':'buffer','code':'x','inputs':[]}", false},
        {"{'type':'cubemap','name':1,'code':'x','inputs':[]}", false},
        {"{'type':'image','code':null,'inputs':[]}", false},
        {"{'type':'image','code':'x'}", false},
        {"{'type':'image','code':'x','inputs':{}}", false},
        {"{'type':'image','code':'x','inputs':[1]}", false},
        {"{'type':'image','code':'','inputs':[{}]}", true},
        {"{'type':'sound'}", true}};
    for (const auto& [text, isRead] : rows) {
        ShaderStage stage;
        EXPECT_EQ(ReadPassJson(Object(Json(text)), stage), isRead) << text;
    }
}

TEST(ReadPass, SourceIsHeldInTheCodePage) {
    const std::pair<const char*, QByteArray> rows[] = {
        {"\\u20ac\\u0081\\r\\n\\t\\u4e2d\\ud83d\\ude00|", "\x80\x81\r\n\t???|"}, {"ab\\u0000cd", "ab"}};
    for (const auto& [code, source] : rows) {
        ShaderStage stage;
        ASSERT_TRUE(ReadPassJson(Object(Pass("image", "", code)), stage));
        EXPECT_EQ(stage.source, source) << code;
    }
}

TEST(ReadPass, InputsLandByChannelNumberAndOnlyThere) {
    struct Row {
        const char* channel;
        int slot;  // -1: left out
    };
    const Row rows[] = {{"0", 0},           {"3", 3},
                        {"-0.9", 0},        {"3.9", 3},
                        {"null", 0},        {"-1", -1},
                        {"4", -1},          {"255", -1},
                        {"1e300", -1},      {"-1e300", -1},
                        {"2147483648", -1}, {"4294967296", -1},
                        {"4294967297", -1}, {"9223372036854775807", -1}};
    for (const Row& row : rows) {
        const QString inputs = Json("{'ctype':'volume','channel':0},{'ctype':'mic','channel':%1}")
                                   .arg(QString::fromLatin1(row.channel));
        ShaderStage stage;
        bool refused = false;
        ASSERT_TRUE(ReadPassJson(Object(Pass("image", "", "x", inputs)), stage, &refused));
        EXPECT_EQ(refused, row.slot < 0) << row.channel;
        for (int i = 0; i < kChannelCount; ++i) {
            const uint32_t expected = i == row.slot ? kChannelAudio
                                      : i == 0      ? kChannelVolume
                                                    : kChannelUnused;
            EXPECT_EQ(stage.channels[size_t(i)].kind, expected) << row.channel << " in " << i;
        }
    }
}

TEST(ReadInfo, MissingKeyLeavesStringsEmptyAndEarlierNumbers) {
    // In the order of reading, with the sum of the numbers read before.
    struct Row {
        const char* key;
        const char* value;
        uint32_t sum;
    };
    const Row rows[] = {{"id", "'i'", 0},         {"date", "'d'", 0},     {"viewed", "1", 0},
                        {"name", "'n'", 1},       {"username", "'u'", 1}, {"description", "'t'", 1},
                        {"likes", "2", 1},        {"published", "4", 3},  {"flags", "8", 7},
                        {"usePreview", "16", 15}, {"hasliked", "32", 31}};
    for (const Row& broken : rows) {
        for (const char* replacement : {"", "[]"}) {
            QString members = Json("'tags':['a']");
            for (const Row& row : rows) {
                const QString value = Json(&row == &broken ? replacement : row.value);
                if (!value.isEmpty()) members += Json(",'%1':%2").arg(QString::fromLatin1(row.key), value);
            }
            ShaderInfo info;
            EXPECT_FALSE(ReadInfoJson(Json("{'Shader':{'info':{%1}}}").arg(members), info)) << broken.key;
            EXPECT_EQ(
                info.viewed + info.likes + info.published + info.flags + info.usePreview + info.hasliked,
                broken.sum)
                << broken.key;
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
    const Row rows[] = {{"[]", true, ""},
                        {"['a','b',' c']", true, "a, b,  c"},
                        {"['a',1,'b']", false, "a"},
                        {"'a'", false, ""}};
    for (const Row& row : rows) {
        const QString info = SampleInfo().replace(Json("['sea','blue']"), Json(row.tags));
        ShaderInfo result;
        EXPECT_EQ(ReadInfoJson(Json("{'Shader':{'info':%1}}").arg(info), result), row.isRead) << row.tags;
        EXPECT_EQ(result.tags, QString::fromLatin1(row.joined)) << row.tags;
        EXPECT_EQ(result.description, QStringLiteral("Deep water"));
    }
}

TEST(ReadInfo, NumbersKeepTheirLow32Bits) {
    struct Row {
        const char* number;
        uint32_t value;
        bool refused;
    };
    const Row rows[] = {{"3.99", 3, false},
                        {"-1", 0xFFFFFFFFu, false},
                        {"4294967301", 5, false},
                        {"-9223372036854775808", 0, false},
                        {"9223372036854775808", 0, true},
                        {"1e300", 0, true},
                        {"-1e300", 0, true}};
    for (const Row& row : rows) {
        const QString info = SampleInfo().replace(Json("'likes':3"), Json("'likes':") + Json(row.number));
        ShaderInfo result;
        bool refused = false;
        EXPECT_TRUE(ReadInfoJson(Json("{'Shader':{'info':%1}}").arg(info), result, &refused)) << row.number;
        EXPECT_EQ(result.likes, row.value) << row.number;
        EXPECT_EQ(refused, row.refused) << row.number;
    }
}

TEST(ReadProject, TextsOverTheirCapacityAreLeftEmptyAndReadingGoesOn) {
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
            JsonObject info = Object(SampleInfo());
            const QString value(length, u'v');
            if (row.field == &ShaderInfo::tags) {
                JsonArray tags;
                tags.Append(value.left(length - 3));
                tags.Append(QStringLiteral("w"));
                info.SetNamedValue(QStringLiteral("tags"), tags);
            } else {
                info.SetNamedValue(QString::fromLatin1(row.key), value);
            }
            const QString passes = u'[' + Pass("image", "", "x") + u']';
            ShaderProject project;
            bool refused = fits;
            ASSERT_TRUE(
                ReadProjectJson(ProjectText(passes, Json("'1'"), info.Stringify()), project, &refused));
            EXPECT_EQ(refused, !fits) << row.key << " " << length;
            EXPECT_EQ((project.info.*row.field).size(), fits ? length : 0) << row.key << " " << length;
            EXPECT_EQ(project.info.hasliked, 1u);
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
        EXPECT_EQ(channel.filter, gl::kNearest);
    }
}

TEST(ReadProject, VersionIsReadAsALeadingFloat) {
    const std::pair<const char*, std::optional<float>> rows[] = {{"'0.1'", 0.1f}, {"' \\t\\n 2.5'", 2.5f},
                                                                 {"'3.'", 3.0f},  {"'-.5x'", -0.5f},
                                                                 {"'1,5'", 1.0f}, {"'1e2 more'", 100.0f},
                                                                 {"'1e'", 1.0f},  {"'0x1.8p1'", 3.0f},
                                                                 {"'0xg'", 0.0f}, {"'InFinity'", INFINITY},
                                                                 {"''", {}},      {"' '", {}},
                                                                 {"'v1'", {}},    {"'.e1'", {}},
                                                                 {"'1e39'", {}},  {"'-1e9999999999'", {}},
                                                                 {"'1e-60'", {}}, {"0.1", {}},
                                                                 {"null", {}}};
    const QString passes = u'[' + Pass("image", "", "x") + u']';
    for (const auto& [ver, version] : rows) {
        ShaderProject project;
        EXPECT_EQ(ReadProjectJson(ProjectText(passes, Json(ver)), project), version.has_value()) << ver;
        EXPECT_EQ(project.version, version.value_or(0.0f)) << ver;
        EXPECT_EQ(project.stages[kStageImage].kind, version ? kStageImage : kStageNone) << ver;
    }
    ShaderProject project;
    EXPECT_TRUE(ReadProjectJson(ProjectText(passes, Json("'nan'")), project));
    EXPECT_TRUE(std::isnan(project.version));
}

TEST(ReadProject, LaterPassesReplaceEarlierOnesAndOthersAreDiscarded) {
    const QStringList passes = {Pass("buffer", "Buffer A", "first", Json("{'ctype':'mic'}")),
                                Pass("sound", "Sound", "never"), Pass("novelty", "", "discarded"),
                                Pass("buffer", "Buf A", "second"), QStringLiteral("{}")};
    ShaderProject project;
    project.stages[kStageCubeA].kind = kStageCubeA;  // left from before
    ASSERT_TRUE(ReadProjectJson(ProjectText(u'[' + passes.join(u',') + u']'), project));
    EXPECT_EQ(project.stages[kStageBufferA].source, QByteArray("second"));
    EXPECT_EQ(project.stages[kStageBufferA].channels[0].kind, kChannelUnused);
    for (uint32_t id = 0; id < uint32_t(kStageCount); ++id) {
        EXPECT_EQ(project.stages[id].kind, id == kStageBufferA ? id : 0) << id;
    }
}

TEST(ReadProject, FailureKeepsWhatWasReadBefore) {
    struct Row {
        QString text;
        bool isRead, hasVersion, hasInfo, hasImage;
    };
    const QString image = Pass("image", "", "x");
    const QString one = QStringLiteral("\"1\"");
    const Row rows[] = {
        {QStringLiteral("{}"), false, false, false, false},
        {Json("{'Shader':[]}"), false, false, false, false},
        {Json("{'Shader':{'ver':'1','renderpass':[]}}"), false, true, false, false},
        {ProjectText(u'[' + image + u']', one, QStringLiteral("[]")), false, true, false, false},
        {ProjectText(u'[' + image + u']', one, QStringLiteral("{}")), true, true, false, true},
        {ProjectText(QStringLiteral("{}"), one), false, true, true, false},
        {ProjectText(u'[' + image + u',' + u'1' + u',' + Pass("common", "", "y") + u']', one), false, true,
         true, true}};
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
    ShaderProject project;
    EXPECT_TRUE(ReadProjectJson(text, project));
    for (qsizetype length = 0; length < text.size(); ++length) {
        EXPECT_FALSE(ReadProjectJson(text.left(length), project)) << length;
    }
}

}  // namespace
}  // namespace pixelgrove
