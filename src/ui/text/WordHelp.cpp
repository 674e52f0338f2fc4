#include "ui/text/WordHelp.h"

#include <QHash>
#include <QString>
#include <QStringList>

namespace pixelgrove {

namespace {

QHash<QString, const WordHelp*> MakeTable() {
    QHash<QString, const WordHelp*> table;
    for (const std::span<const WordHelp> part :
         {NumberFunctionHelp(), TextureFunctionHelp(), MemoryFunctionHelp(), InputHelp(), KeywordHelp()})
        for (const WordHelp& row : part)
            table.insert(QString::fromLatin1(row.word), &row);
    return table;
}

}  // namespace

const WordHelp* HelpOf(QStringView word) {
    static const QHash<QString, const WordHelp*> table = MakeTable();
    return table.value(word.toString());
}

QString TypesExplained(QStringView form) {
    constexpr std::pair<const char16_t*, const char*> kinds[] = {
        {u"genType", "genType: float, vec2, vec3 or vec4"},
        {u"genIType", "genIType: int, ivec2, ivec3 or ivec4"},
        {u"genUType", "genUType: uint, uvec2, uvec3 or uvec4"},
        {u"genBType", "genBType: bool, bvec2, bvec3 or bvec4"},
        {u"gvec4", "g: nothing, i for ints or u for uints"},
        {u"gsampler", "g: nothing, i for ints or u for uints"},
        {u"gimage", "g: nothing, i for ints or u for uints"},
        {u"NxM", "M, N: 2, 3 or 4"},
        {u"matN ", "N: 2, 3 or 4"},
        {u"vecN x", "N: 2, 3 or 4"},
    };
    QStringList lines;
    for (const auto& [kind, line] : kinds)
        if (form.contains(QStringView(kind))) lines.append(QString::fromLatin1(line));
    lines.removeDuplicates();
    return lines.join(u'\n');
}

}  // namespace pixelgrove
