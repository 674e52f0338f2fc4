#include "ui/RecentMenus.h"

#include "commands/Commands.h"
#include "ui/Menus.h"

namespace pixelgrove {

const std::array<RecentMenuRow, 3> kRecentMenus{{
    {u"Recent Files", kCmdRecentFileFirst, &RecentLists::recentFiles},
    {u"Recent Projects", kCmdRecentProjectFirst, &RecentLists::recentProjects},
    {u"Recent Palette Files", kCmdRecentPaletteFirst, &RecentLists::recentPalettes},
}};

void RebuildRecentMenu(Menus& menus, const RecentMenuRow& row) {
    QStringList texts;
    if (const StringList* list = (App()->recent.*row.list).get()) {
        for (const QString& path : list->entries)
            texts.append(QString::number(texts.size() + 1) + u' ' + path);
    }
    menus.FillSubmenu(QString::fromUtf16(row.label), row.firstCommandId, texts);
}

void RebuildRecentMenus(Menus& menus) {
    for (const RecentMenuRow& row : kRecentMenus)
        RebuildRecentMenu(menus, row);
}

}  // namespace pixelgrove
