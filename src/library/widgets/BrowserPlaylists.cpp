// What the browser does with playlists, and the popup menu of its rows.
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QUrl>

#include "commands/Commands.h"
#include "commands/MenuTable.h"
#include "core/BaseFolders.h"
#include "library/Playlist.h"
#include "library/widgets/BrowserWindow.h"
#include "persist/RecentList.h"
#include "platform/Files.h"
#include "ui_ShadertoyBrowse.h"
#include "windows/widgets/MenuBuilder.h"

namespace pixelgrove {

namespace {

const QString kLoadingFailed = QStringLiteral("Error loading playlist.");
const QString kSavingFailed = QStringLiteral("Error saving playlist.");

FileQuestion PlaylistQuestion(const QString& caption, const QString& current) {
    FileQuestion question;
    question.caption = caption;
    question.folder =
        current.isEmpty() ? NormalizePath(PathOf(PathId::Playlists)) : QFileInfo(current).absolutePath();
    question.filters = {QStringLiteral("Playlist Files (*.playlist)")};
    question.defaultSuffix = QStringLiteral("playlist");
    return question;
}

}  // namespace

void BrowserWindow::SetUpMenu() {
    auto* bar = new QMenuBar;
    QMenu* recent = nullptr;
    AddMenuRows(*bar, BrowserMenuRows(), [this](QAction& action, const MenuRow& row) {
        connect(&action, &QAction::triggered, this, [this, id = row.commandId] { roads_.runCommand(id); });
    });
    QMenu* file = bar->actions().constFirst()->menu();
    for (const QAction* action : file->actions())
        if (action->menu()) recent = action->menu();
    connect(file, &QMenu::aboutToShow, this, [this, recent] { FillRecent(*recent); });
    SetMenuBar(bar);
}

void BrowserWindow::FillRecent(QMenu& menu) {
    menu.clear();
    const QStringList paths = recent_ ? recent_->entries : QStringList();
    for (int i = 0; i < paths.size(); ++i) {
        const QAction* action = menu.addAction(MenuText(QString::number(i + 1) + u' ' + paths[i]));
        connect(action, &QAction::triggered, this,
                [this, i] { roads_.runCommand(kCmdRecentPlaylistFirst + i); });
    }
    menu.setEnabled(!paths.isEmpty());
}

void BrowserWindow::ShowPlaylist(bool isLoaded, const QString& path) {
    if (isLoaded) memory_.playlist = path;
    // Also after a failure: the rows may have lost their records.
    ShowPage();
    const QString name = QFileInfo(path).fileName();
    Say(isLoaded ? QStringLiteral("%1: %2 shaders.").arg(name).arg(context_.results.size())
                 : QStringLiteral("%1 can't be read as a playlist.").arg(name));
}

void BrowserWindow::NotePlaylist(const QString& path) {
    memory_.playlist = path;
    PushRecent(recent_, path);
}

void BrowserWindow::OpenPlaylist() {
    const QString path =
        dialogs.askForFile(PlaylistQuestion(QStringLiteral("Open Playlist"), memory_.playlist));
    if (path.isEmpty()) return roads_.say(kLoadingFailed);
    LeaveWork();
    const bool isLoaded = LoadPlaylist(path, context_);
    ShowPlaylist(isLoaded, path);
    if (isLoaded) NotePlaylist(path);
}

void BrowserWindow::OpenRecentPlaylist(int index) {
    const QString path = recent_ ? recent_->entries.value(index) : QString();
    if (path.isEmpty()) return;
    LeaveWork();
    const bool isLoaded = LoadPlaylist(path, context_);
    ShowPlaylist(isLoaded, path);
    roads_.say(isLoaded ? QStringLiteral("Playlist loaded.") : kLoadingFailed);
}

void BrowserWindow::SavePlaylist() {
    FileQuestion question = PlaylistQuestion(QStringLiteral("Save Playlist"), memory_.playlist);
    question.forSaving = true;
    question.fileName = QFileInfo(memory_.playlist).fileName();
    const QString path = dialogs.askForFile(question);
    if (path.isEmpty()) return roads_.say(kSavingFailed);
    const bool isSaved = pixelgrove::SavePlaylist(path, context_);
    Say(isSaved ? QStringLiteral("Playlist saved.") : QStringLiteral("The playlist can't be saved."));
    if (isSaved) NotePlaylist(path);
}

void BrowserWindow::AppendTo(const QString& path, const QStringList& ids) {
    const QString name = QFileInfo(path).fileName();
    Say(AppendToPlaylist(path, ids) ? QStringLiteral("Added to %1.").arg(name)
                                    : QStringLiteral("%1 can't be written.").arg(name));
}

// In the order of the list.
QStringList BrowserWindow::SelectedIds() const {
    QStringList ids;
    const QItemSelectionModel& selection = *form_->resultList->selectionModel();
    for (int row = 0; row < model_.rowCount(); ++row)
        if (selection.isRowSelected(row)) ids.append(context_.results[model_.PlaceOf(row)].id);
    return ids;
}

void BrowserWindow::FillPlaylistMenu(QMenu& menu, const ShaderInfo& record) {
    QStringList ids = SelectedIds();
    if (ids.size() < 2) ids = {record.id};
    const QString folder = NormalizePath(PathOf(PathId::Playlists));
    for (const PlaylistFile& file : ListPlaylists(folder)) {
        connect(menu.addAction(MenuText(file.name)), &QAction::triggered, this,
                [this, path = file.path, ids] { AppendTo(path, ids); });
    }
    menu.addSeparator();
    connect(menu.addAction(QStringLiteral("Add to new playlist")), &QAction::triggered, this, [this, ids] {
        FileQuestion question = PlaylistQuestion(QStringLiteral("Add to New Playlist"), {});
        question.filters = {QStringLiteral("Moirelane Playlist Files (*.playlist)"),
                            QStringLiteral("All Files (*)")};
        question.forSaving = true;
        const QString path = dialogs.askForFile(question);
        if (!path.isEmpty()) AppendTo(path, ids);
    });
}

void BrowserWindow::PopUpMenu(const QPoint& at) {
    const QModelIndex row = form_->resultList->indexAt(at);
    if (!row.isValid()) return;
    // By value: the list may change while the menu is open.
    const ShaderInfo record = context_.results[model_.PlaceOf(row.row())];
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [&](const QString& text, bool isAvailable, std::function<void()> run) {
        QAction* action = menu->addAction(MenuText(text));
        action->setEnabled(isAvailable);
        connect(action, &QAction::triggered, this, std::move(run));
    };
    const QString& name = record.name.isEmpty() ? record.id : record.name;
    const bool hasUser = !record.username.isEmpty();
    add(QStringLiteral("View \"%1\" on Shadertoy").arg(name), true,
        [this, record] { dialogs.openUrl(QUrl(ShaderPageUrl(service_, record.id))); });
    add(QStringLiteral("View %1's profile on Shadertoy").arg(record.username), hasUser,
        [this, record] { dialogs.openUrl(QUrl(UserPageUrl(service_, record.username))); });
    add(QStringLiteral("Search for more shaders from %1").arg(record.username), hasUser, [this, record] {
        form_->searchCombo->setEditText(record.username);
        Search();
    });
    add(QStringLiteral("Remove selection from list"), true, [this] { RemoveSelected(); });
    menu->addSeparator();
    FillPlaylistMenu(*menu->addMenu(QStringLiteral("Add to Playlist")), record);
    menu->popup(form_->resultList->viewport()->mapToGlobal(at));
}

}  // namespace pixelgrove
