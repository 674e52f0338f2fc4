// The settings file as it lies on the disk: whether it can be relied on, and how it is replaced without loss.
//
// Main thread.
#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

#include "persist/XmlStore.h"

namespace pixelgrove {

enum class SettingsFileState {
    Missing,
    Whole,
    Damaged,     // read, but empty, cut off, or none of ours
    Unreadable,  // there, but refused by the system
};

struct SettingsFile {
    SettingsFileState state = SettingsFileState::Missing;
    QString reason;                   // of Unreadable, in the system's words
    QByteArray bytes;                 // of Whole and Damaged
    std::unique_ptr<XmlStore> store;  // the same, as far as they can be understood
};

SettingsFile ReadSettingsFile(const QString& path);

// Where a damaged file's content is kept: beside it.
QString BadSettingsPath(const QString& path);

// What the user is to know of the file at that path: a line for what is so, one for what comes of it. Empty
// when all is well.
QString SettingsNotice(const SettingsFile& file, const QString& path);

}  // namespace pixelgrove
