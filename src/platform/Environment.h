// What the process knows of its surroundings: its own path, well-known folders, environment variables.
//
// SetVariable changes the process environment and is called by the main thread at start-up only,
// UserEnvironment by the main thread; the rest is for any thread.
#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace pixelgrove {

// Absolute path of the running program, links resolved; empty when /proc can't tell.
QString ProgramPath();

// The folders that hold installed programs: /usr, /usr/local, /opt.
QStringList ProgramFilesFolders();

// $XDG_DATA_HOME when it is an absolute path, else ~/.local/share.
QString ApplicationDataFolder();

// Makes NAME=value part of the process environment.
void SetVariable(const char* name, const QString& value);

// The environment as the user gave it: without what SetVariable made of it.
QProcessEnvironment UserEnvironment();

// Replaces each %NAME% by the variable's value; an unknown name stays as it stands, percent signs included.
QString ExpandVariables(const QString& text);

}  // namespace pixelgrove
