#include "shadertoy/JsonObject.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include "shadertoy/JsonText.h"
#include "shadertoy/ProjectJson.h"
#include "shadertoy/ProjectJsonSamples.h"

namespace pixelgrove {
namespace {

TEST(JsonObject, LookUpsFailOnMissingKeysAndOtherTypes) {
    const auto object = JsonObject::Parse(Json("{'s':'1','n':1,'o':{},'a':[{},'x',1],'z':null,'b':true}"));
    ASSERT_TRUE(object);
    for (const char16_t* key : {u"s", u"n", u"o", u"a", u"z", u"b", u"missing", u"S"}) {
        const QStringView name(key);
        EXPECT_EQ(object->GetNamedString(name).has_value(), name == u"s");
        EXPECT_EQ(object->GetNamedNumber(name).has_value(), name == u"n");
        EXPECT_EQ(object->GetNamedObject(name).has_value(), name == u"o");
        EXPECT_EQ(object->GetNamedArray(name).has_value(), name == u"a");
        EXPECT_EQ(object->HasKey(name), name.size() == 1 && name != u"S");
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
    for (int unit = 1; unit <= 0xFFFF; ++unit) {
        all += QChar(char16_t(unit));
    }
    // Reversed too: then surrogates stand in no valid order anywhere.
    QString reversed;
    for (qsizetype i = all.size(); i-- > 0;)
        reversed += all[i];

    for (const QString& content : {all, reversed}) {
        QString escaped = content;
        escaped.replace(u'\\', QStringLiteral("\\\\")).replace(u'"', QStringLiteral("\\\""));
        const auto raw =
            JsonObject::Parse(QString(QStringLiteral("{\"k\":\"") + escaped + QStringLiteral("\"}")));
        ASSERT_TRUE(raw);
        EXPECT_TRUE(raw->GetNamedString(u"k") == content);
        JsonObject made;
        made.SetNamedValue(QStringLiteral("k"), content);
        const auto back = JsonObject::Parse(made.Stringify());
        ASSERT_TRUE(back);
        EXPECT_TRUE(back->GetNamedString(u"k") == content);
    }
    // Half a pair outside a string or behind a backslash is no JSON.
    EXPECT_FALSE(JsonObject::Parse(QString(QStringLiteral("{\"k\":1}") + QChar(0xD800))));
    EXPECT_FALSE(
        JsonObject::Parse(QString(QStringLiteral("{\"k\":\"\\") + QChar(0xDC00) + QStringLiteral("\"}"))));
    const auto escapes = JsonObject::Parse(QStringLiteral("{\"k\":\"\\ud83d\\ude00\\ud83d\"}"));
    ASSERT_TRUE(escapes);
    EXPECT_EQ(escapes->GetNamedString(u"k")->size(), 3);
}

TEST(JsonObject, DeepOrHugeTextFailsSoon) {
    const QString bracket = QStringLiteral("[");
    const QString nestedObject = QStringLiteral("{\"a\":");
    const qsizetype units = 50'000'000;
    const QString texts[] = {
        bracket.repeated(100'000),
        nestedObject + bracket.repeated(100'000),
        nestedObject.repeated(100'000),
        nestedObject + bracket.repeated(100'000) + QStringLiteral("]").repeated(100'000) + u'}',
        QString(units, u'x'),
        QString(units, u' '),
        QString(units, u'{'),
        QStringLiteral("{\"") + QString(units, u'x'),
        QString(kMaxJsonUnits, u' ') + QStringLiteral("{}"),
    };
    QElapsedTimer timer;
    timer.start();
    ShaderProject project;
    for (const QString& text : texts) {
        EXPECT_FALSE(JsonObject::Parse(text));
        EXPECT_FALSE(ReadProjectJson(text, project));
    }
    EXPECT_LT(timer.elapsed(), 20'000);  // generous, for sanitizers; the whole takes about a second
}

TEST(JsonText, CutsBehindTheJsonAndRefusesOtherText) {
    struct Row {
        const char* text;
        const char* result;  // null: refused
    };
    const Row rows[] = {
        {"", nullptr},
        {" \r\n\t", nullptr},
        {"x{}", nullptr},
        {"{}", "{}"},
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
    for (const Row& row : rows) {
        const QByteArray text = Json(row.text).toLatin1();
        const auto result = CheckJsonText(text);
        ASSERT_EQ(result.has_value(), row.result != nullptr) << row.text;
        if (result) EXPECT_EQ(result->toByteArray(), Json(row.result).toLatin1()) << row.text;
    }
    EXPECT_EQ(CheckJsonText(QByteArrayView("{}\0{", 4))->size(), 2);
}

}  // namespace
}  // namespace pixelgrove
