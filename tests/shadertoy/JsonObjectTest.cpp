#include "shadertoy/JsonObject.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <algorithm>
#include <functional>

#include "shadertoy/JsonText.h"
#include "shadertoy/ProjectJson.h"
#include "shadertoy/ProjectJsonSamples.h"

namespace pixelgrove {
namespace {

TEST(JsonObject, LookUpsFailOnMissingKeysAndOtherTypes) {
    const auto object = JsonObject::Parse(Json("{'s':'1','n':1,'o':{},'a':[{},'x',1],'z':null,'b':true}"));
    ASSERT_TRUE(object);
    for (const QStringView key : {u"s", u"n", u"o", u"a", u"z", u"b", u"missing", u"S"}) {
        EXPECT_EQ(object->GetNamedString(key).has_value(), key == u"s");
        EXPECT_EQ(object->GetNamedNumber(key).has_value(), key == u"n");
        EXPECT_EQ(object->GetNamedObject(key).has_value(), key == u"o");
        EXPECT_EQ(object->GetNamedArray(key).has_value(), key == u"a");
        EXPECT_EQ(object->HasKey(key), key != u"missing" && key != u"S");
    }
    const JsonArray array = *object->GetNamedArray(u"a");
    for (qsizetype i = -1; i <= array.Size(); ++i) {
        EXPECT_EQ(array.GetObjectAt(i).has_value(), i == 0) << i;
        EXPECT_EQ(array.GetStringAt(i).has_value(), i == 1) << i;
    }
}

TEST(JsonObject, RefusesWhatIsNoObject) {
    for (const char* text : {"", " ", "[]", "1", "'x'", "{", "{'a':1}}", "{'a':1,}", "{'a':1} x",
                             "{'a':1e999}", "{'a':NaN}", "{a:1}", "{'a':'\\u12'}"}) {
        EXPECT_FALSE(JsonObject::Parse(Json(text))) << text;
    }
    EXPECT_TRUE(JsonObject::Parse(Json(" \r\n\t{} ")));
}

TEST(JsonObject, EveryCodeUnitSurvivesReadingAndWriting) {
    QString all;
    for (int unit = 1; unit <= 0xFFFF; ++unit)
        all += QChar(char16_t(unit));
    QString reversed = all;  // no surrogate in valid order anywhere
    std::reverse(reversed.begin(), reversed.end());
    const auto parseString = [](const QString& inside) {
        return JsonObject::Parse(QString(QStringLiteral("{\"k\":\"") + inside + QStringLiteral("\"}")));
    };
    for (const QString& content : {all, reversed}) {
        QString escaped = content;
        escaped.replace(u'\\', QStringLiteral("\\\\")).replace(u'"', QStringLiteral("\\\""));
        const auto raw = parseString(escaped);
        ASSERT_TRUE(raw);
        EXPECT_TRUE(raw->GetNamedString(u"k") == content);
        const auto back = JsonObject::Parse(raw->Stringify());
        ASSERT_TRUE(back);
        EXPECT_TRUE(back->GetNamedString(u"k") == content);
    }
    EXPECT_EQ(parseString(QStringLiteral("\\ud83d\\ude00\\ud83d"))->GetNamedString(u"k")->size(), 3);
    // Half a pair outside a string or behind a backslash is no JSON.
    EXPECT_FALSE(JsonObject::Parse(QString(QStringLiteral("{\"k\":1}") + QChar(0xD800))));
    EXPECT_FALSE(parseString(QString(u'\\') + QChar(0xDC00)));
}

TEST(JsonObject, DeepOrHugeTextFailsSoon) {
    const QString member = QStringLiteral("{\"a\":");
    const auto brackets = [](char16_t unit) { return QString(100'000, unit); };
    const qsizetype units = 50'000'000;
    const std::function<QString()> texts[] = {
        [&] { return brackets(u'['); },
        [&] { return member.repeated(100'000); },
        [&] { return member + brackets(u'[') + brackets(u']') + u'}'; },
        [&] { return QString(units, u'x'); },
        [&] { return QString(units, u'{'); },
        [&] { return member + u'"' + QString(units, u'x'); },
        [&] { return QString(kMaxJsonUnits, u' ') + QStringLiteral("{}"); },
    };
    QElapsedTimer timer;
    timer.start();
    for (const auto& text : texts) {
        ShaderProject project;
        EXPECT_FALSE(ReadProjectJson(text(), project));
    }
    EXPECT_LT(timer.elapsed(), 20'000);  // generous, for sanitizers: a plain build takes under a second
}

TEST(JsonText, CutsBehindTheJsonAndRefusesOtherText) {
    const std::pair<const char*, const char*> rows[] = {
        // null: refused
        {"", nullptr},
        {" \r\n\t", nullptr},
        {"x{}", nullptr},
        {" \n{} ", " \n{}"},
        {"[1,2] stray", "[1,2]"},
        {"{} {'a':[]} x", "{} {'a':[]}"},
        {"{'Error':'no'}", nullptr},
        {" {'Error':'no'}", " {'Error':'no'}"},
        {"{'a':'}'}", "{'a':'}'}"},
        {"{'a':'\\'}'}", "{'a':'\\'}'}"},
        {"{'a':'\\\\'} ]", nullptr},
        {"{'a':'}", nullptr},
        {"{'a':1", nullptr},
        {"{]}", nullptr},
        {"{[}]", "{[}]"},  // counted separately: the parser finds this one
        {"{}'", nullptr},
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
