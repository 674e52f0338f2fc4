// The shader browser's row in the table of windows, and its commands. Main thread.
#pragma once

#include <QString>

namespace pixelgrove {

class CommandRegistry;
class MainWindow;
class MessagePane;
class ProjectCommands;
class WindowTable;
struct RecentLists;

// What is handed in outlives the table.
void AddBrowserWindow(WindowTable& windows, CommandRegistry& commands, const RecentLists& recent,
                      MainWindow& mainWindow, ProjectCommands& projects, MessagePane& pane);

// What a load's fetch has to tell: in the browser's status line where there is one, else in the pane. Empty
// at its end.
void ShowFetchProgress(MessagePane& pane, const QString& text);

}  // namespace pixelgrove
