// PaletteBrowser: the dialog in which the user picks a palette among the files of a folder, or among files
// that were selected or dropped. Main thread.
#pragma once

#include <QStringList>
#include <memory>

#include "ui/palettes/PaletteModel.h"
#include "windows/widgets/Dialogs.h"
#include "windows/widgets/UserDialogs.h"

namespace Ui {
class PaletteBrowser;
}

namespace pixelgrove {

// What the button beside the folder's name asks for: files, under its own name or as "Files...", or a
// folder. Hidden: there is no such button.
enum class PaletteSource { SelectFiles, Files, Folder, Hidden };

struct PaletteBrowserSetup {
    QString folder;  // listed at first
    PaletteSource source = PaletteSource::SelectFiles;
    bool selectsSeveral = false;
};

// What outlives a browser until the next one is opened. Owned by who opens them.
struct PaletteBrowserMemory {
    bool isInterpolated = false;
};

class PaletteBrowser : public FrameDialog {
    Q_OBJECT

  public:
    // The memory outlives the dialog. Exec is true only when there is a choice.
    PaletteBrowser(QWidget* owner, const PaletteBrowserSetup& setup, PaletteBrowserMemory& memory);
    ~PaletteBrowser() override;

    // The path of the selected row. Of a browser in which several can be selected, the folder of the first
    // one, then the names of all in it, in the order of the list; of those elsewhere, as after a drop, the
    // whole path. Empty without a selection.
    QStringList Choice() const;

    UserDialogs dialogs = MakeUserDialogs(this);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void SetUpList();
    void FitColumns();
    // The files of those that are folders; the others' own names are not looked at.
    void ShowFiles(const QStringList& paths, const QString& folder);
    void SelectFiles();
    void Accept();

    const PaletteBrowserSetup setup_;
    PaletteBrowserMemory& memory_;
    const std::unique_ptr<Ui::PaletteBrowser> form_;
    PaletteModel model_;
    QString folder_;  // the one that is shown: whose files are listed, or that of the first
};

// Shows the dialog above the owner's window and waits. The choice; empty when it was cancelled.
QStringList RunPaletteBrowser(QWidget* owner, const PaletteBrowserSetup& setup, PaletteBrowserMemory& memory);

}  // namespace pixelgrove
