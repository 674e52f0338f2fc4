// The command line of pixelgrove, parsed. Pure.
#pragma once

#include <QString>
#include <QStringList>

namespace pixelgrove {

struct WorkbenchOptions {
    QStringList files;
    bool watch = false;
    bool help = false;
    bool version = false;
    QString error;  // empty when the command line is good
};

// arguments without the program's name.
WorkbenchOptions ParseWorkbenchOptions(const QStringList& arguments);

QString WorkbenchUsage();

}  // namespace pixelgrove
