#include "platform/TextEditor.h"

#include <QFileInfo>
#include <QStandardPaths>

#include "platform/Files.h"
#include "platform/Programs.h"

namespace pixelgrove {

namespace {

enum class LineForm {
    Option,    // --line=12 FILE
    PlusSign,  // +12 FILE
    Suffix,    // --goto FILE:12
};

struct EditorRow {
    const char* name;
    LineForm form;
};

constexpr EditorRow kEditors[] = {
    {"kate", LineForm::Option},     {"gedit", LineForm::PlusSign}, {"gnome-text-editor", LineForm::PlusSign},
    {"mousepad", LineForm::Option}, {"xed", LineForm::PlusSign},   {"code", LineForm::Suffix},
};

QStringList ArgumentsFor(LineForm form, const QString& path, int line) {
    if (line < 1) return {path};
    const QString number = QString::number(line);
    switch (form) {
        case LineForm::Option:
            return {QStringLiteral("--line=") + number, path};
        case LineForm::PlusSign:
            return {u'+' + number, path};
        case LineForm::Suffix:
            return {QStringLiteral("--goto"), path + u':' + number};
    }
    return {path};
}

}  // namespace

EditorCommand ChooseEditorCommand(const QString& path, int line,
                                  const std::function<QString(const QString& name)>& findProgram) {
    // Absolute, so that a name that begins with '-' or '+' is never taken for an option.
    const QString file = QFileInfo(NormalizePath(path)).absoluteFilePath();
    for (const EditorRow& row : kEditors) {
        const QString program = findProgram(QString::fromLatin1(row.name));
        if (!program.isEmpty()) return {program, ArgumentsFor(row.form, file, line)};
    }
    const QString opener = findProgram(QStringLiteral("xdg-open"));
    if (opener.isEmpty()) return {};
    return {opener, {file}};
}

bool OpenInTextEditor(const QString& path, int line) {
    if (!IsPlainFile(path)) return false;
    const EditorCommand command = ChooseEditorCommand(
        path, line, [](const QString& name) { return QStandardPaths::findExecutable(name); });
    return !command.program.isEmpty() && StartProgram(command.program, command.arguments);
}

}  // namespace pixelgrove
