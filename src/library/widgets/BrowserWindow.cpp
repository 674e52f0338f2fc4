#include "library/widgets/BrowserWindow.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>

#include "commands/Commands.h"
#include "core/BaseFolders.h"
#include "library/SearchHistory.h"
#include "library/widgets/ResultPainter.h"
#include "look/widgets/Theme.h"
#include "ui_ShadertoyBrowse.h"
#include "windows/widgets/DialogScaler.h"

namespace pixelgrove {

namespace {

constexpr int kColumnPercent[] = {6, 12, 6, 6, 11, 200};
constexpr int kCellMargins = 12;
constexpr double kLeastHeaderScale = 0.85;  // smaller letters can't be read
constexpr QSize kLeastClient(380, 150);
constexpr int kSmallestFont = 5;
constexpr int kLargestFont = 72;

}  // namespace

BrowserWindow::BrowserWindow(const ServiceAddress& service, BrowserMemory& memory,
                             StringList* recentPlaylists, BrowserRoads roads)
    : service_(service),
      memory_(memory),
      recent_(recentPlaylists),
      roads_(std::move(roads)),
      form_(std::make_unique<Ui::ShadertoyBrowse>()) {
    setAttribute(Qt::WA_DeleteOnClose);
    SetUpMenu();
    SetUpForm();
    SetUpList();
    FillHistory();
    ShowPage();
}

BrowserWindow::~BrowserWindow() {
    // The children go after the members, and still tell of sizes and of the focus then.
    for (QObject* child : findChildren<QObject*>())
        child->disconnect(this);
}

void BrowserWindow::SetUpForm() {
    Client()->setFont(FormFont());
    form_->setupUi(Client());
    setWindowTitle(Client()->windowTitle());
    base_ = Client()->size();
    headerHeight_ = form_->headerForm->height();
    listMargin_ = form_->resultList->x();
    AttachScaling(*form_->headerForm);
    SetMinimumClientSize(kLeastClient);
    ResizeClient(base_);

    QLineEdit* text = form_->searchCombo->lineEdit();
    text->setMaxLength(int(kMaxSearchUnits));
    // What is typed is what is searched for.
    form_->searchCombo->setCompleter(nullptr);
    connect(text, &QLineEdit::returnPressed, this, &BrowserWindow::Search);
    connect(form_->searchButton, &QAbstractButton::clicked, this, &BrowserWindow::Search);
    connect(form_->pageField, &PageField::Stepped, this,
            [this](int step) { GoToPage(SteppedPage(context_, form_->pageField->Text(), step)); });
    connect(form_->pageField, &PageField::Committed, this,
            [this] { GoToPage(TypedPage(context_, form_->pageField->Text())); });
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &BrowserWindow::StopScan);
    PlaceParts();
    for (QWidget* part : Client()->findChildren<QWidget*>())
        part->installEventFilter(this);
    Client()->installEventFilter(this);
    form_->searchCombo->setFocus();
}

void BrowserWindow::SetUpList() {
    QTreeView& list = *form_->resultList;
    list.setModel(&model_);
    list.setItemDelegate(new ResultPainter(&list));
    list.setRootIsDecorated(false);
    list.setItemsExpandable(false);
    list.setUniformRowHeights(true);
    list.setAllColumnsShowFocus(true);
    list.setSelectionMode(QAbstractItemView::ExtendedSelection);
    list.setEditTriggers(QAbstractItemView::NoEditTriggers);
    list.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    list.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    list.setContextMenuPolicy(Qt::CustomContextMenu);
    list.header()->setStretchLastSection(false);
    list.header()->setSectionsMovable(false);
    list.header()->setSectionsClickable(true);
    // A sheet of its own: the program's would win over a palette.
    const UiColours& colours = Theme().rows;
    list.setStyleSheet(QStringLiteral("QTreeView { background: %1; color: %2; }")
                           .arg(FromBgr(colours[UiColour::ListViewBackground]).name(),
                                FromBgr(colours[UiColour::ListViewText]).name()));
    hint_ = new QLabel(
        QStringLiteral("Search for a word, or with an empty field for all. Offline Mode searches the shaders "
                       "that are kept on this machine. Playlists are in the File menu."),
        list.viewport());
    hint_->setProperty("faint", true);
    hint_->setWordWrap(true);
    hint_->setAlignment(Qt::AlignCenter);
    hint_->setAttribute(Qt::WA_TransparentForMouseEvents);
    (new QVBoxLayout(list.viewport()))->addWidget(hint_);
    connect(&list, &QTreeView::activated, this, &BrowserWindow::LoadRow);
    connect(&list, &QWidget::customContextMenuRequested, this, &BrowserWindow::PopUpMenu);
    connect(list.header(), &QHeaderView::sectionClicked, this, &BrowserWindow::SortBy);
    connect(list.verticalScrollBar(), &QScrollBar::valueChanged, this, &BrowserWindow::WantDetails);
    connect(list.verticalScrollBar(), &QScrollBar::rangeChanged, this, &BrowserWindow::WantDetails);
    auto* remove = new QShortcut(Qt::Key_Delete, &list);
    remove->setContext(Qt::WidgetShortcut);
    connect(remove, &QShortcut::activated, this, &BrowserWindow::RemoveSelected);
    details_.loaded = [this](const LoadedDetails& details) { TakeDetails(details); };
    details_.finished = [this] { EndDetails(); };
}

// The window is wide and low in the default layout: the controls keep a size that can be read there, and the
// list has the rest.
void BrowserWindow::PlaceParts() {
    const double x = double(Client()->width()) / base_.width();
    const double y = double(Client()->height()) / base_.height();
    const int header = qRound(headerHeight_ * std::max(kLeastHeaderScale, std::min(x, y)));
    const int margin = qRound(listMargin_ * std::min(x, y));
    form_->headerForm->setGeometry(0, 0, Client()->width(), header);
    form_->resultList->setGeometry(margin, header, Client()->width() - 2 * margin,
                                   Client()->height() - header - margin);
}

void BrowserWindow::FillHistory() {
    QStringList texts = SearchHistory(CacheRoot() + u'/' + kCacheSearches);
    texts.sort(Qt::CaseInsensitive);
    form_->searchCombo->addItems(texts);
    form_->searchCombo->setCurrentIndex(-1);
    form_->searchCombo->clearEditText();
}

void BrowserWindow::ShowPage() {
    tried_.clear();
    sortsLater_ = false;
    model_.ShowPage();
    FitColumns();
    form_->resultList->header()->setSortIndicatorShown(false);
    form_->resultList->scrollToTop();
    if (!context_.results.empty() || search_) hint_->hide();
    form_->pageField->Show(context_.page);
    form_->pagesLabel->setText(QStringLiteral("of %1").arg(PageCount(context_)));
    WantDetails();
}

void BrowserWindow::GoToPage(uint32_t page) {
    if (page == context_.page) return;
    context_.page = page;
    ShowPage();
}

void BrowserWindow::FitColumns() {
    QHeaderView& header = *form_->resultList->header();
    const int width = form_->resultList->viewport()->width();
    const QFontMetrics letters = form_->resultList->fontMetrics();
    for (int i = 0; i < int(std::size(kColumnPercent)); ++i) {
        // A title shows whole, and so do an id and a size.
        const QString whole = i == 0   ? QStringLiteral("MXMXMX")
                              : i == 3 ? QStringLiteral("888888")
                                       : QString();
        const int least =
            std::max(header.sectionSizeHint(i), letters.horizontalAdvance(whole) + kCellMargins);
        header.resizeSection(i, std::max(least, width * kColumnPercent[i] / 100));
    }
}

void BrowserWindow::SortBy(int column) {
    ClickColumn(memory_.sort, ResultColumn(column));
    // The comparison needs the details of all rows, so those that failed are asked for again.
    tried_.clear();
    sortsLater_ = true;
    WantDetails();
}

void BrowserWindow::ShowSort() {
    sortsLater_ = false;
    model_.Sort(memory_.sort);
    QHeaderView& header = *form_->resultList->header();
    header.setSortIndicatorShown(true);
    header.setSortIndicator(int(*memory_.sort.column),
                            memory_.sort.isUpward ? Qt::AscendingOrder : Qt::DescendingOrder);
}

// Posted, so that no painting or scrolling waits for it.
void BrowserWindow::WantDetails() {
    if (std::exchange(isWantPosted_, true)) return;
    const auto want = [this] {
        isWantPosted_ = false;
        if (search_) return;
        std::vector<std::pair<size_t, QString>> wanted;
        const auto add = [&](int row) {
            const size_t place = model_.PlaceOf(row);
            const ShaderInfo& record = context_.results[place];
            if (record.name.isEmpty() && !record.id.isEmpty() && !tried_.contains(place))
                wanted.emplace_back(place, record.id);
        };
        const QTreeView& list = *form_->resultList;
        const int rows = model_.rowCount();
        const QModelIndex top = list.indexAt({0, 0});
        const QModelIndex bottom = list.indexAt({0, list.viewport()->height() - 1});
        const int first = top.isValid() ? top.row() : rows;
        const int last = bottom.isValid() ? bottom.row() : rows - 1;
        for (int row = first; row <= last; ++row)
            add(row);
        if (sortsLater_) {
            for (int row = 0; row < rows; ++row)
                if (row < first || row > last) add(row);
            if (wanted.empty() && !details_.IsLoading()) return ShowSort();
        }
        details_.Want(std::move(wanted));
    };
    QMetaObject::invokeMethod(this, want, Qt::QueuedConnection);
}

void BrowserWindow::TakeDetails(const LoadedDetails& details) {
    if (details.place >= context_.results.size()) return;
    ShaderInfo& record = context_.results[details.place];
    if (record.id != details.id) return;
    tried_.insert(details.place);
    if (!details.problem.isEmpty()) {
        Say(QStringLiteral("The details of %1 can't be loaded: %2.").arg(details.id, details.problem));
        return;
    }
    record = details.info;
    // The record is found by what it was asked for.
    record.id = details.id;
    model_.NoteChange(details.place);
}

void BrowserWindow::EndDetails() {
    // What came on screen since.
    WantDetails();
}

void BrowserWindow::LoadRow(const QModelIndex& index) {
    if (!index.isValid()) return;
    // Posted: a load runs an event loop, in which the window may be closed, and the list goes on after this.
    const auto load = [this, id = context_.results[model_.PlaceOf(index.row())].id] {
        const QPointer<BrowserWindow> self(this);
        const auto road = roads_.load;
        road(id);
        if (self && form_->autoRunCheck->isChecked()) roads_.runCommand(kCmdRestart);
    };
    QMetaObject::invokeMethod(this, load, Qt::QueuedConnection);
}

void BrowserWindow::RemoveSelected() {
    for (const QModelIndex& index : form_->resultList->selectionModel()->selectedRows())
        RemoveRow(context_, model_.PlaceOf(index.row()));
    const int scroll = form_->resultList->verticalScrollBar()->value();
    model_.DropRemoved();
    form_->resultList->verticalScrollBar()->setValue(scroll);
    WantDetails();
}

void BrowserWindow::ZoomList(int delta) {
    if (delta == 0) return;
    QTreeView& list = *form_->resultList;
    QFont font = list.font();
    font.setPixelSize(
        std::clamp(QFontInfo(font).pixelSize() + (delta > 0 ? 1 : -1), kSmallestFont, kLargestFont));
    list.setFont(font);
    list.header()->setFont(font);
}

bool BrowserWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Wheel) {
        const auto* wheel = static_cast<QWheelEvent*>(event);
        if (wheel->modifiers().testFlag(Qt::ControlModifier)) {
            ZoomList(wheel->angleDelta().y());
            return true;
        }
    }
    if (event->type() == QEvent::Resize && watched == Client()) PlaceParts();
    if (event->type() == QEvent::Resize && watched == form_->resultList->viewport()) {
        FitColumns();
        WantDetails();
    }
    return FrameWindow::eventFilter(watched, event);
}

void BrowserWindow::Say(const QString& text) {
    form_->statusLine->Say(text);
}

void BrowserWindow::ShowLoading(const QString& text) {
    form_->statusLine->ShowMeanwhile(text);
}

}  // namespace pixelgrove
