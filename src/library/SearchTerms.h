// What a search of the cache looks for in the text of a shader.
//
// Any thread.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QStringView>
#include <vector>

namespace pixelgrove {

// The terms of a search text: what stands between blanks. Double quotes are dropped; blanks between two, or
// behind the last one, are a part of their term.
class SearchTerms {
  public:
    explicit SearchTerms(QStringView text);

    // True when every term is somewhere in the bytes; capitals of ASCII count as their small letters. Always
    // for a text without terms, never for one that needs more than 256 bytes, its end included.
    bool Match(QByteArrayView json) const;

  private:
    std::vector<QByteArray> terms_;  // in small letters
    bool isTooLong_ = false;
};

// The same for a single JSON text, which ends at its first zero byte.
bool MatchSearchTerms(QStringView text, QByteArrayView json);

}  // namespace pixelgrove
