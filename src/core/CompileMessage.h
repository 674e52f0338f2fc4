// CompileMessage: one line of what a failed compile tells the user, and the place that it is about.
//
// Made by the run's thread, handed over whole, then the main thread's.
#pragma once

#include <QString>
#include <vector>

namespace pixelgrove {

struct CompileMessage {
    QString place;   // a stage's name as StageName gives it, or a file; empty for none
    int line = 0;    // from 1 as the user counts, but from a driver: may be any int
    QString text;    // the whole line as it is shown, place included, without LF
    int column = 0;  // from 1, as the driver counts; 0 where it says none
};

using CompileMessages = std::vector<CompileMessage>;

// Each message's text, ended by LF.
inline QString TextOf(const CompileMessages& messages) {
    QString text;
    for (const CompileMessage& message : messages)
        text.append(message.text).append(u'\n');
    return text;
}

}  // namespace pixelgrove
