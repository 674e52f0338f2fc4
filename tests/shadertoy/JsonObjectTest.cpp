#include "shadertoy/JsonObject.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "shadertoy/JsonText.h"
#include "shadertoy/ProjectJson.h"
#include "shadertoy/ProjectJsonSamples.h"
#include "support/CpuTime.h"

namespace pixelgrove {
namespace {

TEST(JsonObject, EveryCodeUnitSurvivesReadingAndWriting) {
    QString all;
    for (int unit = 1; unit <= 0xFFFF; ++unit)
        all += QChar(char16_t(unit));
    std::reverse(all.begin(), all.end());  // no surrogate in valid order anywhere
    QString escaped = all;
    escaped.replace(u'\\', QStringLiteral("\\\\")).replace(u'"', QStringLiteral("\\\""));
    const auto raw = JsonObject::Parse(QStringLiteral("{\"k\":\"") + escaped + QStringLiteral("\"}"));
    ASSERT_TRUE(raw);
    EXPECT_TRUE(raw->GetNamedString(u"k") == all);
    const auto back = JsonObject::Parse(raw->Stringify());
    ASSERT_TRUE(back);
    EXPECT_TRUE(back->GetNamedString(u"k") == all);
    // Half a pair outside a string or behind a backslash is no JSON.
    EXPECT_FALSE(JsonObject::Parse(Json("{'k':1}") + QChar(0xD800)));
    EXPECT_FALSE(JsonObject::Parse(Json("{'k':'\\?'}").replace(u'?', QChar(0xDC00))));
}

TEST(JsonObject, DeepOrHugeTextFailsSoon) {
    const QString member = QStringLiteral("{\"a\":");
    const QString texts[] = {
        member + QString(100'000, u'[') + QString(100'000, u']') + u'}',
        QString(20'000'000, u'{'),
        QString(kMaxJsonUnits, u' ') + QStringLiteral("{}"),
    };
    const int start = test::ThreadCpuMs();
    for (const QString& text : texts) {
        ShaderProject project;
        EXPECT_FALSE(ReadProjectJson(text, project)) << text.size();
    }
    EXPECT_LT(test::ThreadCpuMs() - start,
              20'000);  // generous, for sanitizers: a plain build takes under a second
}

TEST(JsonText, CutsBehindTheJsonAndRefusesOtherText) {
    const std::pair<const char*, const char*> rows[] = {
        // null: refused
        {" \r\n\t", nullptr},
        {"x{}", nullptr},
        {" \n{} ", " \n{}"},
        {"[1,2] stray", "[1,2]"},
        {"{'Error':'no'}", nullptr},
        {" {'Error':'no'}", " {'Error':'no'}"},
        {"{'a':'\\'}'}", "{'a':'\\'}'}"},
        {"{'a':'\\\\'} ]", nullptr},
        {"{'a':'}", nullptr},
        {"{[}]", "{[}]"},  // counted separately: the parser finds this one
        {"{}\\", "{}"},
    };
    for (const auto& [text, expected] : rows) {
        const QByteArray bytes = Json(text).toLatin1();
        const auto result = CheckJsonText(bytes);
        ASSERT_EQ(result.has_value(), expected != nullptr) << text;
        if (!result) continue;
        EXPECT_EQ(result->toByteArray(), Json(expected).toLatin1()) << text;
    }
    EXPECT_EQ(CheckJsonText(QByteArrayView("{}\0{", 4))->size(), 2);
}

}  // namespace
}  // namespace pixelgrove
