// BrowserWindow: searches for shaders at the service or in the cache, lists them by pages, shows and edits
// playlists, and has a double click load a shader.
//
// A search and the details of rows are fetched on a worker, while the window takes input. Escape ends a scan
// of the cache with what it has found. Main thread; deletes itself once it is closed.
#pragma once

#include <QStringList>
#include <functional>
#include <memory>
#include <set>

#include "core/StringList.h"
#include "library/ResultRows.h"
#include "library/widgets/DetailsLoader.h"
#include "library/widgets/ResultModel.h"
#include "net/WebWorker.h"
#include "windows/widgets/FrameWindow.h"
#include "windows/widgets/UserDialogs.h"

class QLabel;
class QMenu;

namespace Ui {
class ShadertoyBrowse;
}

namespace pixelgrove {

// What the browser asks of the program. Each outlives the window; none is empty.
struct BrowserRoads {
    std::function<void(const QString& id)> load;    // the shader into the editor
    std::function<void(int commandId)> runCommand;  // of the program's menus
    std::function<void(const QString& text)> say;   // in the main window's message pane
};

// What outlives a browser until the next one is opened. Owned by who makes them.
struct BrowserMemory {
    SortState sort;
    QString playlist;  // the path of the last one that was opened or saved
};

class BrowserWindow : public FrameWindow {
    Q_OBJECT

  public:
    // The list, which may be null, and the memory outlive the window.
    BrowserWindow(const ServiceAddress& service, BrowserMemory& memory, StringList* recentPlaylists,
                  BrowserRoads roads);
    ~BrowserWindow() override;

    // Each asks for a file, and tells failures as its button does.
    void OpenPlaylist();
    void SavePlaylist();
    // Entry `index` of the recent ones; nothing for one that isn't there.
    void OpenRecentPlaylist(int index);

    // In the status line until the next call; an empty text brings back what stood there.
    void ShowLoading(const QString& text);

    UserDialogs dialogs = MakeUserDialogs(this);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct SearchRun;

    void SetUpForm();
    void SetUpList();
    void SetUpMenu();
    void PlaceParts();
    void FillHistory();

    void Search();
    void ShowSearch(const SearchRun& run);
    void EndSearch(SearchRun& run);
    void StopScan();
    void LeaveWork();

    void ShowPage();
    void GoToPage(uint32_t page);
    void FitColumns();
    void SortBy(int column);
    void ShowSort();
    void WantDetails();
    void TakeDetails(const LoadedDetails& details);
    void EndDetails();

    void LoadRow(const QModelIndex& index);
    void RemoveSelected();
    void ZoomList(int delta);
    void PopUpMenu(const QPoint& at);
    void FillPlaylistMenu(QMenu& menu, const ShaderInfo& record);
    void AppendTo(const QString& path, const QStringList& ids);
    QStringList SelectedIds() const;
    void ShowPlaylist(bool isLoaded, const QString& path);
    void FillRecent(QMenu& menu);
    void NotePlaylist(const QString& path);
    void Say(const QString& text);

    const ServiceAddress service_;
    BrowserMemory& memory_;
    StringList* recent_;
    const BrowserRoads roads_;
    std::unique_ptr<Ui::ShadertoyBrowse> form_;
    QLabel* hint_ = nullptr;  // in the list until there was something to show
    QSize base_;              // of the form
    int headerHeight_ = 0;    // of its upper part, as the next
    int listMargin_ = 0;
    SearchContext context_;
    ResultModel model_{context_};
    WebWorker worker_;
    DetailsLoader details_{service_, worker_};
    std::shared_ptr<SearchRun> search_;  // the one whose end is waited for
    std::set<size_t> tried_;             // places on this page whose details were asked for
    bool sortsLater_ = false;            // once all details of the page are there
    bool isWantPosted_ = false;
};

}  // namespace pixelgrove
