// The main window's menus: every entry carries the id of its command and runs it through the window. The one
// home of the menu texts, and of which commands there are today. Main thread.
#pragma once

#include <QAction>
#include <QMap>
#include <QStringList>
#include <functional>
#include <map>

class QMenu;
class QMenuBar;

namespace pixelgrove {

class Menus {
  public:
    // Builds the menus into the bar, ticked as AppState and the stored settings say. The lists of recent
    // files are filled when their menu opens. runCommand is called with an entry's id while the receiver
    // lives.
    Menus(QMenuBar& bar, QObject& receiver, std::function<void(int commandId)> runCommand);

    // Null for a command that is on no menu.
    QAction* Action(int commandId) const;
    void SetTick(int commandId, bool ticked);
    // The entries that act on the text where the focus is.
    QList<QAction*> EditActions() const;

    // The submenu of that label, '&' included, at any depth; null when there is none.
    QMenu* FindSubmenu(const QString& label) const;
    // Makes the texts the submenu's only entries, with the ids from firstId on. False without that submenu.
    bool FillSubmenu(const QString& label, int firstId, const QStringList& texts);

    // The names of the layout files; those beyond the last id are left out.
    void FillLayouts(const QStringList& names);
    // What FillLayouts was given for this id; empty for other ids.
    QString LayoutName(int commandId) const { return layouts_.value(commandId); }

  private:
    QAction* AddEntry(QMenu& menu, int commandId, const QString& text);
    void ShowTicks();

    QMenuBar& bar_;
    QObject& receiver_;
    std::function<void(int commandId)> runCommand_;
    std::map<int, QAction*> actions_;
    QMap<int, QString> layouts_;
};

// False for the commands of what this version lacks: their entries are disabled, and sending them does
// nothing.
bool IsCommandAvailable(int commandId);

// The text as a menu shows it letter for letter.
QString MenuText(QString text);

// A frame buffer format as the menu offers it.
struct FrameBufferFormatRow {
    int commandId;
    uint32_t format;  // GL internal format
    bool isAccepted;  // choosing it changes the format
};
// Ids kCmdFrameBufferFormatFirst to kCmdFrameBufferFormatLast in order; null for another id.
const FrameBufferFormatRow* FindFrameBufferFormat(int commandId);
// The entry of a format; null when the menu has none.
const FrameBufferFormatRow* FindFrameBufferFormatOf(uint32_t format);

}  // namespace pixelgrove
