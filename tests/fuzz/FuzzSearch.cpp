// Any bytes as a playlist, and as a search with the text that it is looked for in.
#include <algorithm>
#include <utility>

#include "FuzzTarget.h"
#include "library/Playlist.h"
#include "library/SearchTerms.h"
#include "platform/CodePage.h"

using namespace pixelgrove;

const std::vector<std::string>& FuzzSeeds() {
    static const std::vector<std::string> seeds = {
        "XslGRr\nabc\r\n\r\nMdX3Rr\n\n4tdSWr",
        "two \"words be\" fore|{\"two\":\"a, WORDS before: \\\"words be\\\", fore\"}",
        "a|aAbBaAbBaAbBaAbBaAbBaAbBaAbBaAbBaAbBaAbB",
    };
    return seeds;
}

namespace {

std::string Lowered(std::string text) {
    for (char& byte : text)
        if (byte >= 'A' && byte <= 'Z') byte = char(byte + 32);
    return text;
}

// The rule by the letter: each term in turn, at each place.
bool Matches(const std::string& search, const std::string& text) {
    if (search.size() > 255) return false;
    std::string term;
    bool isQuoted = false;
    for (const char byte : Lowered(search) + ' ') {
        if (byte == '"')
            isQuoted = !isQuoted;
        else if (byte != ' ' || isQuoted)
            term += byte;
        else if (Lowered(text).find(std::exchange(term, {})) == std::string::npos)
            return false;
    }
    // The blank that was added belongs to no term.
    if (isQuoted) term.pop_back();
    return Lowered(text).find(term) != std::string::npos;
}

void CheckPlaylist(QByteArrayView bytes) {
    const std::optional<QStringList> ids = ParsePlaylist(bytes);
    if (!ids) return;
    QByteArray saved;
    for (const QString& id : *ids) {
        FUZZ_CHECK(!id.isEmpty() && id.size() <= 20);
        FUZZ_CHECK(!id.contains(u'\r') && !id.contains(u'\n') && !id.contains(QChar(0)));
        saved += ToCodePage(id) + '\n';
    }
    FUZZ_CHECK(ParsePlaylist(saved) == ids);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string input(data, data + size);
    CheckPlaylist(QByteArrayView(input));

    const size_t bar = std::min(input.find('|'), input.size());
    const std::string search = input.substr(0, bar);
    const std::string text = input.substr(std::min(bar + 1, input.size()));
    const SearchTerms terms(FromCodePage(QByteArrayView(search)));
    FUZZ_CHECK(terms.Match(QByteArrayView(text)) == Matches(search, text));
    return 0;
}
