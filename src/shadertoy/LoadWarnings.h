// LoadWarnings: what of a project could not be read, for the user: plain sentences, one line each.
//
// A value of whoever loads; one thread at a time.
#pragma once

#include <QStringList>

namespace pixelgrove {

class LoadWarnings {
  public:
    // A file may give reason for millions; repeated ones, and those after so many, are only counted.
    static constexpr qsizetype kMaxLines = 30;

    void Add(const QString& sentence);
    void Add(const QStringList& sentences);
    bool IsEmpty() const { return lines_.isEmpty(); }
    // In the order of adding, with a last line that tells how many more there were.
    QStringList Lines() const;

  private:
    QStringList lines_;
    qsizetype further_ = 0;
};

}  // namespace pixelgrove
