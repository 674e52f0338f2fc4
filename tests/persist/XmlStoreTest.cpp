#include "persist/XmlStore.h"

#include <gtest/gtest.h>

#include "platform/Files.h"
#include "support/ImageTestSupport.h"

namespace pixelgrove {
namespace {

class XmlStoreTest : public ImageFileTest {
  protected:
    std::unique_ptr<XmlStore> Load(const QByteArray& bytes) {
        return WriteBytes(Path("in.xml"), bytes) ? XmlLoad(Path("in.xml")) : nullptr;
    }
};

TEST_F(XmlStoreTest, WritesItsFormByteForByteAndReadsItBack) {
    const auto writer = XmlCreate();
    ASSERT_TRUE(writer);
    EXPECT_FALSE(XmlCloseElement(*writer));
    EXPECT_TRUE(XmlOpenElement(*writer, S("Outer")));
    EXPECT_TRUE(XmlWriteText(*writer, S("Text"), QStringLiteral(u"caf\u00e9 \u20ac \u03c9\0lost")));
    EXPECT_TRUE(XmlWriteReal(*writer, S("Real"), -0.5));
    EXPECT_TRUE(XmlCloseElement(*writer));
    ASSERT_TRUE(XmlSave(*writer, Path("out.xml")));
    const QByteArray expected =
        "<?xml version=\"1.0\"?>\n<Outer>\n\t<Text>caf\xe9 \x80 ?</Text>\n\t<Real>-0.500000</Real>\n</Outer>";
    EXPECT_EQ(ReadWholeFile(Path("out.xml")), expected + '\0');

    const auto reader = XmlLoad(Path("out.xml"));
    ASSERT_TRUE(reader);
    EXPECT_EQ(XmlFindReal(*reader, S("Real")), -0.5) << "levels aren't known to the search";
    ASSERT_TRUE(XmlEnter(*reader, S("OUTER")));
    EXPECT_EQ(XmlFind(*reader, S("text")), QStringLiteral(u"caf\u00e9 \u20ac ?"));
}

TEST_F(XmlStoreTest, TextsOfTheUserComeBackAsTheyAre) {
    const struct {
        QString text;
        const char* written;
    } rows[] = {
        {S("Tom & \"Jerry\"'s > 1; &lt; &amp; &#60;"), "Tom & \"Jerry\"'s > 1; &lt; &amp; &#60;"},
        {QStringLiteral(u"caf\u00e9 \u20ac\u0081 \t\r\n "), "caf\xe9 \x80\x81 \t\r\n "},
        {S("Alt+<"), "Alt+&#x3C;"},
        {S("</Text></Outer><Text>"), "&#x3C;/Text>&#x3C;/Outer>&#x3C;Text>"},
        {QStringLiteral(u"/\u03c9/\U0001F600.glsl"), "/&#x3C9;/&#xD83D;&#xDE00;.glsl"},
        {S("&#x3C;"), "&#x26;#x3C;"},
        {S("&&#x26;#x;&#x"), "&&#x26;#x26;#x;&#x26;#x"},
        {QStringLiteral(u"a\0b"), "a&#x0;b"},
        {QString(QChar(0xDC00)), "&#xDC00;"},
        {QString(), ""},
    };
    for (const auto& row : rows) {
        const auto writer = XmlCreate();
        EXPECT_TRUE(XmlOpenElement(*writer, S("Outer")) && XmlWriteUserText(*writer, S("Text"), row.text) &&
                    XmlWriteUserText(*writer, S("Next"), S("next")) && XmlCloseElement(*writer));
        ASSERT_TRUE(XmlSave(*writer, Path("out.xml")));
        const QByteArray bytes = ReadWholeFile(Path("out.xml")).value_or("");
        EXPECT_TRUE(bytes.contains("<Text>" + QByteArray(row.written) + "</Text>\n")) << bytes.constData();
        const auto reader = XmlLoad(Path("out.xml"));
        ASSERT_TRUE(reader && XmlEnter(*reader, S("Outer"))) << row.written;
        EXPECT_EQ(XmlFindUserText(*reader, S("Text")), row.text) << row.written;
        EXPECT_EQ(XmlFindUserText(*reader, S("Next")), S("next")) << row.written;
    }
    // What was written raw and only resembles an escape.
    for (const char* raw : {"&#x", "&#x;", "&#x3c;", "&#x12345;", "&#x 3C;", "&#xG;", "&#x3C", "&#38;"}) {
        const auto reader = Load(QByteArray("\n<Text>") + raw + "</Text>;");
        ASSERT_TRUE(reader);
        EXPECT_EQ(XmlFindUserText(*reader, S("Text")), QLatin1String(raw));
    }
}

TEST_F(XmlStoreTest, FindsTagsAsTextWhereTheyStand) {
    const auto store = Load(
        "anything <A>first line</A>\r\n \t<!-- <A>1</A> --><B x=\"1\">2</B><C>a&lt;<i></C>\n"
        "</D><D><E>3</E></D> <F><E>4</E> <G>5");
    ASSERT_TRUE(store);
    EXPECT_EQ(XmlFind(*store, S("A")), S("1"));
    EXPECT_EQ(XmlFind(*store, S("B")), std::nullopt);
    EXPECT_EQ(XmlFind(*store, S("C")), S("a&lt;"));
    EXPECT_EQ(XmlFind(*store, S("G")), S("5"));
    EXPECT_FALSE(XmlEnter(*store, S("missing")));
    EXPECT_EQ(store->depth, 0u);
    // Closed ahead of its start, and never closed: entered, but empty.
    for (const char* name : {"D", "F"}) {
        ASSERT_TRUE(XmlEnter(*store, S(name))) << name;
        EXPECT_EQ(XmlFind(*store, S("E")), std::nullopt) << name;
        EXPECT_FALSE(XmlEnter(*store, S("E"))) << name;
        XmlLeave(*store);
    }
    XmlLeave(*store);
    EXPECT_EQ(XmlFind(*store, S("E")), S("3"));
}

TEST_F(XmlStoreTest, StopsAtItsLimits) {
    QByteArray nested = "\n";
    for (uint32_t i = 0; i < XmlStore::kLevels; ++i)
        nested = nested + "<L" + QByteArray::number(i) + ">";
    for (uint32_t i = XmlStore::kLevels; i-- > 0;)
        nested = nested + "</L" + QByteArray::number(i) + ">";
    const auto reader = Load(nested);
    ASSERT_TRUE(reader);
    const auto writer = XmlCreate();
    for (uint32_t i = 0; i < XmlStore::kLevels; ++i) {
        const QString name = QStringLiteral("L%1").arg(i);
        EXPECT_EQ(XmlEnter(*reader, name), i + 1 < XmlStore::kLevels) << i;
        EXPECT_EQ(XmlOpenElement(*writer, name), i + 1 < XmlStore::kLevels) << i;
    }
    EXPECT_TRUE(writer->text.endsWith(QString(30, u'\t') + S("<L30>\n")));

    // A document that something was left out of doesn't replace a good one.
    ASSERT_TRUE(WriteBytes(Path("old.xml"), "old"));
    EXPECT_FALSE(XmlSave(*writer, Path("old.xml")));
    EXPECT_EQ(ReadWholeFile(Path("old.xml")), QByteArray("old"));

    const auto names = XmlCreate();
    EXPECT_TRUE(XmlWriteInt(*names, QString(63, u'n'), 1));
    EXPECT_FALSE(XmlWriteInt(*names, QString(64, u'n'), 1));
    const auto large = XmlCreate();
    EXPECT_TRUE(XmlWriteText(*large, S("A"), QString(XmlStore::kMaxCharacters / 2, u'a')));
    EXPECT_FALSE(XmlWriteText(*large, S("B"), QString(XmlStore::kMaxCharacters / 2, u'b')));
    EXPECT_FALSE(large->text.contains(u'b'));
}

TEST_F(XmlStoreTest, LoadsWhatItCan) {
    EXPECT_FALSE(XmlLoad(Path("missing.xml")));
    EXPECT_FALSE(XmlLoad(dir.path()));
    const char* const texts[] = {"", "one line", "\r\n\t ", "\n<", "\n<A", "\n<A>", "\n</A>"};
    for (const char* text : texts) {
        const auto store = Load(text);
        ASSERT_TRUE(store) << text;
        EXPECT_EQ(XmlFind(*store, S("A")).value_or(QString()), QString()) << text;
    }
    const auto cut = Load(QByteArray("\n<A>1</A>\0<B>2</B>", 19));
    ASSERT_TRUE(cut);
    EXPECT_EQ(XmlFind(*cut, S("A")), S("1"));
    EXPECT_EQ(XmlFind(*cut, S("B")), std::nullopt);
}

}  // namespace
}  // namespace pixelgrove
