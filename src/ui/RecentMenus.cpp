#include "ui/RecentMenus.h"

#include "commands/Commands.h"
#include "ui/Menus.h"

namespace pixelgrove {

const std::array<RecentMenuRow, 3> kRecentMenus{{
    {u"Recent Files", kCmdRecentFileFirst, &RecentLists::recentFiles},
    {u"Recent Projects", kCmdRecentProjectFirst, &RecentLists::recentProjects},
    {u"Recent Palette Files", kCmdRecentPaletteFirst, &RecentLists::recentPalettes},
}};

void FillRecentMenu(Menus& menus, const RecentMenuRow& row, const RecentLists& lists) {
    QStringList texts;
    if (const StringList* list = (lists.*row.list).get()) {
        for (const QString& path : list->entries)
            texts.append(QString::number(texts.size() + 1) + u' ' + path);
    }
    menus.FillSubmenu(QString::fromUtf16(row.label), row.firstCommandId, texts);
}

}  // namespace pixelgrove
