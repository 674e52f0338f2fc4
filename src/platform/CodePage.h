// The program's one narrow code page: Windows-1252 as a fixed single-byte page.
//
// Shader source for GL, project files and .glsl files hold bytes in this page, never UTF-8. The five
// bytes that the page leaves undefined (0x81 0x8D 0x8F 0x90 0x9D) map to the code points of the same
// number, so every byte string survives FromCodePage followed by ToCodePage.
//
// Pure functions; any thread.
#pragma once

#include <QByteArray>
#include <QString>

namespace pixelgrove {

// One byte for each UTF-16 code unit; a unit outside the page (each half of a surrogate pair too)
// becomes '?'. Never fails. NULs are kept.
QByteArray ToCodePage(QStringView text);

// How many characters of the text are outside the page; a surrogate pair is one.
qsizetype CountLackingCharacters(QStringView text);

// One UTF-16 code unit for each byte. Never fails.
QString FromCodePage(QByteArrayView bytes);

}  // namespace pixelgrove
