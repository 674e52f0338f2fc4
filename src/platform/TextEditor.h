// Opening a source file in the user's own text editor. Main thread.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace pixelgrove {

struct EditorCommand {
    QString program;  // absolute path; empty when no editor is installed
    QStringList arguments;
};

// The command line that opens the file on a line: the first installed of kate, gedit, gnome-text-editor,
// mousepad, xed and code, each with its own line option, else xdg-open, which knows no lines. findProgram
// gives the absolute path of a program or an empty string. Lines count from 1; below 1 no line is asked
// for. Pure but for findProgram.
EditorCommand ChooseEditorCommand(const QString& path, int line,
                                  const std::function<QString(const QString& name)>& findProgram);

// Starts the editor as a process of its own, which outlives this one, and returns at once. False when the
// path is no plain file, no editor is installed, or it can't be started.
bool OpenInTextEditor(const QString& path, int line);

}  // namespace pixelgrove
