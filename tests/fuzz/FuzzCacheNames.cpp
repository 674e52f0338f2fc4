// Any bytes as an answer of the service, and as ids, searches and names of files in its cache.
#include "FuzzTarget.h"
#include "library/CacheNames.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "shadertoy/JsonText.h"

using namespace pixelgrove;

const std::vector<std::string>& FuzzSeeds() {
    static const std::vector<std::string> seeds = {
        R"( {"Shader":{"ver":"0.1","info":{"id":"XslGRr"},"renderpass":[{"code":"a\n\"b\\\"}\\"}]}} stray)",
        R"([{"a":"]}"},[],{"b":[{}]}])",
        "{\"Error\":\"no\"}",
        "xslgrr_19",
        "XslGRr",
        "MZXW6YTBOI======",
    };
    return seeds;
}

namespace {

// The rule by the letter, byte by byte; -1 where the text is refused. No blanks and no error answers.
qsizetype JsonLength(QByteArrayView text) {
    qsizetype braces = 0, brackets = 0, end = 0;
    bool inString = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char byte = text[i];
        if (byte == '\\') {
            ++i;
        } else if (byte == '"') {
            inString = !inString;
        } else if (!inString) {
            braces += (byte == '{') - (byte == '}');
            brackets += (byte == '[') - (byte == ']');
            if (braces < 0 || brackets < 0) return -1;
            if ((byte == '}' || byte == ']') && braces == 0 && brackets == 0) end = i + 1;
        }
    }
    return inString || braces != 0 || brackets != 0 ? -1 : end;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArrayView bytes(data, qsizetype(size));
    const std::optional<QByteArrayView> json = CheckJsonText(bytes);
    if (json) FUZZ_CHECK(json->data() == bytes.data() && json->size() <= bytes.size());
    const bool mayBeJson = !bytes.isEmpty() && (bytes[0] == '{' || bytes[0] == '[') &&
                           !bytes.contains('\0') && !bytes.startsWith("{\"Error\":");
    if (mayBeJson) FUZZ_CHECK((json ? json->size() : -1) == JsonLength(bytes));

    const QString text = FromCodePage(bytes);
    FUZZ_CHECK(text.size() <= kMaxShaderIdUnits || !EncodeCacheName(text));
    if (const std::optional<QString> name = EncodeCacheName(text)) {
        FUZZ_CHECK(IsSafeFileName(*name));
        FUZZ_CHECK(text.contains(u'_') || DecodeCacheName(*name) == text);
    }
    if (const std::optional<QString> id = DecodeCacheName(text)) FUZZ_CHECK(EncodeCacheName(*id));
    const QString latin1 = QString::fromLatin1(bytes);
    const QString name = Base32Encode(latin1);
    FUZZ_CHECK(Base32Decode(name) == latin1);
    FUZZ_CHECK(!name.contains(u'/') && !name.contains(u'.'));
    if (const std::optional<QString> search = Base32Decode(text)) FUZZ_CHECK(search->size() <= text.size());
    return 0;
}
