#include "library/CacheNames.h"

#include <gtest/gtest.h>

#include "library/ServiceAddress.h"

namespace pixelgrove {
namespace {

QString Text(const char* text) {
    return QString::fromUtf8(text);
}

TEST(CacheNames, IdsThatDifferHaveFilesThatDifferInMoreThanCase) {
    const std::pair<const char*, const char*> good[] = {
        {"AbC", "abc_5"},
        {"abc", "abc_0"},
        {"ldd", "ldd_0"},
        {"XslGRr", "xslgrr_19"},
        {"ABCDEFGHIJKLMNOPQRST", "abcdefghijklmnopqrst_FFFFF"},
        {"4\xC3\x89t", "4\xC3\x89t_0"},  // a capital beyond ASCII stays
    };
    for (const auto& [id, name] : good) {
        EXPECT_EQ(EncodeCacheName(Text(id)), Text(name)) << id;
        EXPECT_EQ(DecodeCacheName(Text(name)), Text(id)) << name;
    }
    for (const char* id : {"", "ABCDEFGHIJKLMNOPQRSTU", "a/b", "a\\b", "..", ".a", "a\x01", "a\x7F"})
        EXPECT_EQ(EncodeCacheName(Text(id)), std::nullopt) << id;
    EXPECT_EQ(EncodeCacheName(QStringLiteral("a\0b")), std::nullopt);
    for (const char* name :
         {"abc", "abc_", "abc_5x", "abc_ 5", "abc_-5", "_5", "abc_11112222333344445", "../x_0"})
        EXPECT_EQ(DecodeCacheName(Text(name)), std::nullopt) << name;
    EXPECT_EQ(DecodeCacheName(u"abc_fd"), QStringLiteral("AbC"));
}

TEST(CacheNames, SearchesAreBase32) {
    const std::pair<const char*, const char*> rows[] = {
        {"", ""},
        {"f", "MY======"},
        {"fo", "MZXQ===="},
        {"foo", "MZXW6==="},
        {"foob", "MZXW6YQ="},
        {"fooba", "MZXW6YTB"},
        {"foobar", "MZXW6YTBOI======"},
    };
    for (const auto& [text, name] : rows) {
        EXPECT_EQ(Base32Encode(Text(text)), Text(name)) << text;
        EXPECT_EQ(Base32Decode(Text(name)), Text(text)) << name;
    }
    EXPECT_EQ(Base32Encode(u"\u0166"), QStringLiteral("MY======"));  // its low byte
    EXPECT_EQ(Base32Decode(u"MY=!!!!!"), QStringLiteral("f"));
    for (const char* name : {"MY", "my======", "M1======", "MY=====", "MY=======", "MZXW6Y\xC3\x84="})
        EXPECT_EQ(Base32Decode(Text(name)), std::nullopt) << name;
}

TEST(ServiceAddress, FollowsTheEnvironmentWithinItsForm) {
    const char* const own = "https://www.shadertoy.com";
    const std::tuple<const char*, const char*, const char*, const char*> rows[] = {
        {"", "", own, "qk4zvw"},
        {"http://127.0.0.1:8080", "Ab3de9", "http://127.0.0.1:8080", "Ab3de9"},
        {"HTTPS://Mirror.example/shaders//", "abcde", "https://mirror.example/shaders", "qk4zvw"},
        {"https://[::1]:99/", "abc-ef", "https://[::1]:99", "qk4zvw"},
        {"https://h", "abcdefg", "https://h", "qk4zvw"},
    };
    for (const auto& [url, key, base, usedKey] : rows) {
        const ServiceAddress service = ChooseService(Text(url), Text(key));
        EXPECT_EQ(service.base, Text(base)) << url;
        EXPECT_EQ(service.key, Text(usedKey)) << key;
        EXPECT_EQ(service.problem, QString());
    }
    for (const char* url : {"ftp://h", "file:///etc", "www.example.com", "https://", "https://u:p@h",
                            "https://h/?a", "https://h/#a", "https://h h"}) {
        const ServiceAddress service = ChooseService(Text(url), QString());
        EXPECT_EQ(service.base, QString()) << url;
        EXPECT_NE(service.problem, QString()) << url;
        EXPECT_EQ(ShaderUrl(service, Text("abc")), QString()) << url;
    }
}

TEST(ServiceAddress, FormsAddresses) {
    const ServiceAddress service = ChooseService(Text("https://h"), QString());
    const std::pair<QString, const char*> rows[] = {
        {ShaderUrl(service, Text("XslGRr")), "/api/v1/shaders/XslGRr?key=qk4zvw"},
        {ShaderUrl(service, Text("a?b#c")), "/api/v1/shaders/a%3Fb%23c?key=qk4zvw"},
        {SearchUrl(service, Text("two words?sort=hot")),
         "/api/v1/shaders/query/two+words?sort=hot&key=qk4zvw"},
        {SearchUrl(service, Text("\"c#\" \xC3\xA9%20\n")),
         "/api/v1/shaders/query/%22c%23%22+%C3%A9%20%0A&key=qk4zvw"},
        {MediumUrl(service, Text("a b.jpg")), "/media/a/a%20b.jpg"},
        {ShaderPageUrl(service, Text("abc")), "/view/abc"},
        {UserPageUrl(service, Text("one/two")), "/user/one%2Ftwo"},
    };
    for (const auto& [url, expected] : rows)
        EXPECT_EQ(url, QStringLiteral("https://h") + Text(expected));
    EXPECT_EQ(SearchQuery(service, Text("a b")), Text("a+b&key=qk4zvw"));
}

}  // namespace
}  // namespace pixelgrove
