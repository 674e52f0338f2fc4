#include "ui/palettes/PaletteBrowser.h"

#include <QDragEnterEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <algorithm>

#include "look/widgets/Theme.h"
#include "platform/Files.h"
#include "ui/palettes/PalettePainter.h"
#include "ui_PaletteBrowser.h"
#include "windows/widgets/DialogScaler.h"
#include "windows/widgets/DroppedFiles.h"

namespace pixelgrove {

namespace {

constexpr int kNamePercent = 15;

// While it lives, the cursor says that the program is busy.
class WaitCursor {
  public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

}  // namespace

PaletteBrowser::PaletteBrowser(QWidget* owner, const PaletteBrowserSetup& setup, PaletteBrowserMemory& memory)
    : FrameDialog(owner), setup_(setup), memory_(memory), form_(std::make_unique<Ui::PaletteBrowser>()) {
    Client()->setFont(FormFont());
    form_->setupUi(Client());
    FitToForm(*this);
    setAcceptDrops(true);

    if (setup.source == PaletteSource::Files) form_->selectButton->setText(QStringLiteral("Files..."));
    if (setup.source == PaletteSource::Folder) form_->selectButton->setText(QStringLiteral("Folder..."));
    form_->selectButton->setVisible(setup.source != PaletteSource::Hidden);
    form_->interpolateCheck->setChecked(memory.isInterpolated);
    SetUpList();
    connect(form_->interpolateCheck, &QCheckBox::toggled, this, [this](bool isOn) {
        memory_.isInterpolated = isOn;
        form_->paletteList->viewport()->update();
    });
    connect(form_->selectButton, &QAbstractButton::clicked, this, &PaletteBrowser::SelectFiles);
    connect(form_->acceptButton, &QAbstractButton::clicked, this, &PaletteBrowser::Accept);
    connect(form_->cancelButton, &QAbstractButton::clicked, this, [this] { Done(false); });
    ShowFiles({setup.folder}, setup.folder);
}

PaletteBrowser::~PaletteBrowser() {
    // The list goes after the model and the form, and still tells of its size then.
    form_->paletteList->removeEventFilter(this);
    form_->paletteList->viewport()->removeEventFilter(this);
}

void PaletteBrowser::SetUpList() {
    QTreeView& list = *form_->paletteList;
    list.setModel(&model_);
    list.setItemDelegate(new PalettePainter(model_, memory_.isInterpolated, &list));
    list.setRootIsDecorated(false);
    list.setItemsExpandable(false);
    list.setUniformRowHeights(true);
    list.setAllColumnsShowFocus(true);
    list.setSelectionMode(setup_.selectsSeveral ? QAbstractItemView::ExtendedSelection
                                                : QAbstractItemView::SingleSelection);
    list.setEditTriggers(QAbstractItemView::NoEditTriggers);
    list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list.header()->setStretchLastSection(false);
    list.header()->setSectionsMovable(false);
    list.header()->setSectionsClickable(false);
    list.installEventFilter(this);
    list.viewport()->installEventFilter(this);
    connect(&list, &QAbstractItemView::doubleClicked, this, &PaletteBrowser::Accept);
    list.setFocus();
}

void PaletteBrowser::FitColumns() {
    QHeaderView& header = *form_->paletteList->header();
    const int width = form_->paletteList->viewport()->width();
    const int name = width * kNamePercent / 100;
    header.resizeSection(int(PaletteColumn::Name), name);
    header.resizeSection(int(PaletteColumn::Preview), width - name);
}

void PaletteBrowser::ShowFiles(const QStringList& paths, const QString& folder) {
    const WaitCursor busy;
    QStringList files;
    for (const QString& path : paths) {
        if (IsFolder(path))
            files += PaletteFilesIn(path);
        else if (IsPlainFile(path))
            files.append(path);
    }
    folder_ = folder;
    form_->folderEdit->setText(folder);
    model_.SetFiles(files);
    form_->paletteList->scrollToTop();
}

void PaletteBrowser::SelectFiles() {
    FileQuestion question;
    question.folder = folder_;
    if (setup_.source == PaletteSource::Folder) {
        question.caption = QStringLiteral("Select Palette Folder");
        const QString folder = dialogs.askForFolder(question);
        if (!folder.isEmpty()) ShowFiles({folder}, folder);
        return;
    }
    question.caption = QStringLiteral("Select Palette Files");
    question.filters = {QStringLiteral("Palette Files (*.pal* *.col*)"), QStringLiteral("All Files (*)")};
    const QStringList files = dialogs.askForFiles(question);
    if (!files.isEmpty()) ShowFiles(files, QFileInfo(files.constFirst()).path());
}

QStringList PaletteBrowser::Choice() const {
    QList<int> rows;
    for (const QModelIndex& index : form_->paletteList->selectionModel()->selectedRows())
        rows.append(index.row());
    if (rows.isEmpty()) return {};
    std::ranges::sort(rows);
    const QString& first = model_.FileOf(rows.constFirst());
    if (!setup_.selectsSeveral) return {first};
    QStringList choice{QFileInfo(first).path()};
    for (const int row : rows) {
        const QFileInfo file(model_.FileOf(row));
        choice.append(file.path() == choice.constFirst() ? file.fileName() : file.filePath());
    }
    return choice;
}

void PaletteBrowser::Accept() {
    Done(!Choice().isEmpty());
}

bool PaletteBrowser::eventFilter(QObject* watched, QEvent* event) {
    QTreeView& list = *form_->paletteList;
    if (event->type() == QEvent::Resize && watched == list.viewport()) FitColumns();
    if (event->type() == QEvent::KeyPress && watched == &list && !list.selectionModel()->hasSelection()) {
        // The first key takes the row that has the focus, instead of leaving it unselected.
        const int key = static_cast<QKeyEvent*>(event)->key();
        const QModelIndex current = list.currentIndex();
        if (current.isValid() && (key == Qt::Key_Down || key == Qt::Key_Up || key == Qt::Key_Home)) {
            list.selectionModel()->select(current, QItemSelectionModel::Select | QItemSelectionModel::Rows);
            return true;
        }
    }
    return FrameDialog::eventFilter(watched, event);
}

// The files are looked at, so they are copied even where they would be moved.
void PaletteBrowser::dragEnterEvent(QDragEnterEvent* event) {
    if (DroppedFiles(*event->mimeData()).isEmpty()) return;
    AcceptAsCopy(*event);
}

void PaletteBrowser::dropEvent(QDropEvent* event) {
    const QStringList paths = DroppedFiles(*event->mimeData());
    if (paths.isEmpty()) return;
    AcceptAsCopy(*event);
    const QString& first = paths.constFirst();
    ShowFiles(paths, IsFolder(first) ? first : QFileInfo(first).path());
}

QStringList RunPaletteBrowser(QWidget* owner, const PaletteBrowserSetup& setup,
                              PaletteBrowserMemory& memory) {
    auto* browser = new PaletteBrowser(owner, setup, memory);
    QStringList choice;
    ExecOnce(browser, [&] { choice = browser->Choice(); });
    return choice;
}

}  // namespace pixelgrove
