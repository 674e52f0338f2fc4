#include "library/widgets/ShaderChoice.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>

#include "look/widgets/Theme.h"
#include "ui_ShaderChoice.h"
#include "windows/widgets/DialogScaler.h"

namespace pixelgrove {

namespace {

constexpr qint64 kImportStepMs = 30;
constexpr int kNamePercent = 72;  // of the list's width

QList<QStandardItem*> RowOf(const FoundShader& shader) {
    const QString name = shader.name.isEmpty() ? QStringLiteral("(no name)") : shader.name;
    QList<QStandardItem*> row;
    for (const QString& text : {name, shader.id}) {
        auto* item = new QStandardItem(QString(text).replace(u'\n', u' '));
        item->setEditable(false);
        row.append(item);
    }
    return row;
}

bool MovesInList(int key) {
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

}  // namespace

ShaderChoice::ShaderChoice(QWidget* owner, const FoundShaders& found)
    : FrameDialog(owner),
      found_(found),
      form_(std::make_unique<Ui::ShaderChoice>()),
      rows_(new QStandardItemModel(this)),
      shown_(new QSortFilterProxyModel(this)) {
    Client()->setFont(FormFont());
    form_->setupUi(Client());
    FitToForm(*this);

    form_->openButton->setDefault(true);
    const QString all = QStringLiteral("%1 shaders").arg(qsizetype(found_.shaders.size()) + found_.leftOut);
    form_->hint->setText(found_.leftOut == 0
                             ? all
                             : QStringLiteral("%1, the first %2 are listed").arg(all).arg(kMaxFoundShaders));
    SetUpList();
    connect(form_->filterEdit, &QLineEdit::textChanged, this, &ShaderChoice::Filter);
    connect(form_->openButton, &QAbstractButton::clicked, this, [this] { Done(Selected().has_value()); });
    connect(form_->cancelButton, &QAbstractButton::clicked, this, [this] { Done(false); });
    connect(form_->importButton, &QAbstractButton::clicked, this, [this] {
        import_.emplace(found_.shaders);
        form_->importButton->setEnabled(false);
        importing_.start();
    });
    connect(&importing_, &QTimer::timeout, this, &ShaderChoice::Import);
    form_->filterEdit->installEventFilter(this);
    form_->filterEdit->setFocus();
}

ShaderChoice::~ShaderChoice() = default;

void ShaderChoice::SetUpList() {
    rows_->setHorizontalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Id")});
    for (const FoundShader& shader : found_.shaders)
        rows_->appendRow(RowOf(shader));
    shown_->setSourceModel(rows_);
    shown_->setFilterCaseSensitivity(Qt::CaseInsensitive);
    shown_->setFilterKeyColumn(-1);
    QTreeView& list = *form_->shaderList;
    list.setModel(shown_);
    list.header()->resizeSection(0, list.width() * kNamePercent / 100);
    const UiColours& colours = Theme().rows;
    list.setStyleSheet(QStringLiteral("QTreeView { background: %1; color: %2; }")
                           .arg(FromBgr(colours[UiColour::ListViewBackground]).name(),
                                FromBgr(colours[UiColour::ListViewText]).name()));
    connect(&list, &QAbstractItemView::doubleClicked, this, [this] { Done(Selected().has_value()); });
    Filter({});
}

void ShaderChoice::Filter(const QString& text) {
    shown_->setFilterFixedString(text.trimmed());
    QTreeView& list = *form_->shaderList;
    if (!list.currentIndex().isValid()) list.setCurrentIndex(shown_->index(0, 0));
    list.scrollTo(list.currentIndex());
    form_->openButton->setEnabled(Selected().has_value());
}

std::optional<size_t> ShaderChoice::Selected() const {
    const QModelIndex shown = form_->shaderList->currentIndex();
    if (!shown.isValid()) return std::nullopt;
    return size_t(shown_->mapToSource(shown).row());
}

// Between steps the window lives on; it ends with it.
void ShaderChoice::Import() {
    import_->GoOn(kImportStepMs);
    form_->hint->setText(import_->Outcome());
    if (!import_->IsDone()) return;
    importing_.stop();
    form_->importButton->setEnabled(true);
}

// What moves in the list does so while the filter has the focus.
bool ShaderChoice::eventFilter(QObject* watched, QEvent* event) {
    if (watched == form_->filterEdit && event->type() == QEvent::KeyPress &&
        MovesInList(static_cast<QKeyEvent*>(event)->key())) {
        QCoreApplication::sendEvent(form_->shaderList, event);
        return true;
    }
    return FrameDialog::eventFilter(watched, event);
}

std::optional<size_t> ChooseShader(QWidget* owner, const FoundShaders& found) {
    std::optional<size_t> chosen;
    auto* dialog = new ShaderChoice(owner, found);
    ExecOnce(dialog, [&] { chosen = dialog->Selected(); });
    return chosen;
}

}  // namespace pixelgrove
