// The main window's menus: every entry carries the id of its command, shows its state, and runs it through
// the window. Main thread.
#pragma once

#include <QAction>
#include <QMap>
#include <QStringList>
#include <functional>
#include <map>

class QMenu;
class QMenuBar;

namespace pixelgrove {

class CommandRegistry;
struct RecentLists;

class Menus {
  public:
    // Builds the menus into the bar. The lists of recent files are filled when their menu opens. runCommand
    // is called with an entry's id while the receiver lives. Commands and lists outlive the receiver.
    Menus(QMenuBar& bar, QObject& receiver, const CommandRegistry& commands, const RecentLists& recent,
          std::function<void(int commandId)> runCommand);

    // Null for a command that is on no menu.
    QAction* Action(int commandId) const;
    // Has every entry show what its command's state is now. After each command and whatever else may have
    // changed one.
    void ShowStates();
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
    void Connect(QAction& action, int commandId);

    QMenuBar& bar_;
    QObject& receiver_;
    const CommandRegistry& commands_;
    std::function<void(int commandId)> runCommand_;
    std::map<int, QAction*> actions_;
    QMap<int, QString> layouts_;
};

}  // namespace pixelgrove
