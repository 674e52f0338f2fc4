// Projects in the shapes that people have: which shaders a text holds, each turned into the service's form,
// the one that ProjectJson.h reads.
//
// Besides that form itself these are:
// - the form of the service's own pages: the project without the root key "Shader", or wrapped in one by
// hand;
//   inputs with "type" for "ctype" and "filepath" for "src"; ids that are texts;
// - a list of projects, and an export file, which has such a list as "shaders";
// - GLSL text with a mainImage, which becomes the Image stage.
//
// Texts come from files, the clipboard and other programs and are not trusted. Pure functions whose time and
// memory grow with the text's length alone; any thread.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <vector>

namespace pixelgrove {

struct FoundShader {
    // As the text has them, of at most kMaxFoundNameUnits; empty where it has none.
    QString id;
    QString name;
    // A project file's bytes in the service's form and the code page.
    QByteArray json;
    // What the text says and the service's form has no words for: a bounded number of sentences of one line.
    // What its reader can't take, that tells.
    QStringList warnings;
};

enum class TextForm {
    None,     // no shader in it
    Service,  // one shader; its bytes are those of the text
    Foreign,  // one or more
    Glsl,     // one, without an id or name
};

struct FoundShaders {
    TextForm form = TextForm::None;
    std::vector<FoundShader> shaders;  // in the text's order; empty for None alone
    qsizetype leftOut = 0;             // how many more there were than kMaxFoundShaders
};

constexpr qsizetype kMaxFoundNameUnits = 128;
constexpr qsizetype kMaxFoundShaders = 10'000;

// A file's bytes: in the code page, but for foreign forms and texts with a byte order mark, which are UTF-8
// where they can be.
FoundShaders FindShaders(QByteArrayView bytes);

// A text that comes without bytes, as that of the clipboard. None for one of more than kMaxJsonUnits.
FoundShaders FindShadersInText(const QString& text);

}  // namespace pixelgrove
