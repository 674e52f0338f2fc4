// Build stamps, by which a program and a release tell their age: "(REL) Nov 11 2024 @ 01:42:05", made of a
// type, a date and a time.
//
// Pure; any thread.
#pragma once

#include <QString>
#include <QStringView>

namespace pixelgrove {

// The stamp with its date in front, "2024-11-11 01:42:05 (REL)", so that stamps compare as texts in the order
// of time. What can't be read of it stays empty, or 0 where it is a number; a month that is none is 0.
QString NormaliseBuildStamp(QStringView stamp);

}  // namespace pixelgrove
