#include "controls/widgets/ControlTree.h"

#include <QFontInfo>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QWheelEvent>
#include <algorithm>
#include <iterator>

#include "controls/ControlRecords.h"
#include "look/widgets/Theme.h"
#include "windows/widgets/WindowSystem.h"

namespace pixelgrove {

namespace {

constexpr int kRecordRole = Qt::UserRole;
constexpr int kSmallestFont = 5;
constexpr int kLargestFont = 72;
constexpr int kIndentation = 14;
constexpr int kRowMargin = 2;            // above, below and beside the letters
constexpr qsizetype kMaxTreePath = 259;  // in code units, as all below
constexpr qsizetype kMaxComparedText = 256;

constexpr UiColour kDepthColours[] = {
    UiColour::TreeViewRootText,         UiColour::TreeViewPlanesBranchText, UiColour::TreeViewPlaneText,
    UiColour::TreeViewModuleBranchText, UiColour::TreeViewModuleTypeText,   UiColour::TreeViewModuleText,
    UiColour::TreeViewControlText,
};

UniformControl* RecordOf(const QTreeWidgetItem* item) {
    return item ? static_cast<UniformControl*>(item->data(0, kRecordRole).value<void*>()) : nullptr;
}

QStringList Components(const QString& path) {
    return path.left(kMaxTreePath).split(u'!', Qt::SkipEmptyParts);
}

QTreeWidgetItem* FindChild(const QTreeWidgetItem& parent, const QString& text) {
    for (int i = 0; i < parent.childCount(); ++i)
        if (parent.child(i)->text(0).left(kMaxComparedText) == text.left(kMaxComparedText))
            return parent.child(i);
    return nullptr;
}

QTreeWidgetItem* FindOrAddChild(QTreeWidgetItem& parent, const QString& text) {
    QTreeWidgetItem* child = FindChild(parent, text);
    return child ? child : new QTreeWidgetItem(&parent, {text});
}

// What the components lead to from the root; null where there is none.
QTreeWidgetItem* ItemAt(const QTreeWidget& tree, const QStringList& components) {
    QTreeWidgetItem* item = tree.topLevelItem(0);
    for (const QString& component : components)
        if (!item || !(item = FindChild(*item, component))) return nullptr;
    return item;
}

QStringList ComponentsOf(const QTreeWidgetItem* item) {
    QStringList components;
    for (; item && item->parent(); item = item->parent())
        components.prepend(item->text(0));
    return components;
}

int DepthOf(QModelIndex index) {
    int depth = 0;
    while ((index = index.parent()).isValid())
        ++depth;
    return depth;
}

class RowPainter : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const TreeRowColours colours =
            TreeColours(DepthOf(index), option.state.testFlag(QStyle::State_Selected));
        const QString text =
            option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, option.rect.width());
        if (option.state.testFlag(QStyle::State_Selected)) painter->fillRect(option.rect, colours.ground);
        painter->setFont(option.font);
        painter->setPen(colours.text);
        painter->drawText(option.rect.adjusted(kRowMargin, 0, 0, 0), Qt::AlignVCenter | Qt::TextSingleLine,
                          text);
    }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return {option.fontMetrics.horizontalAdvance(index.data().toString()) + 2 * kRowMargin,
                option.fontMetrics.height() + kRowMargin};
    }
};

}  // namespace

TreeRowColours TreeColours(int depth, bool isSelected) {
    const UiColours& rows = Theme().rows;
    const int last = int(std::size(kDepthColours)) - 1;
    const QColor text = FromBgr(rows[kDepthColours[std::clamp(depth, 0, last)]]);
    if (!isSelected) return {text, FromBgr(rows[UiColour::TreeViewBackground])};
    const auto scaled = [](int channel, double factor) { return std::min(255, int(channel * factor)); };
    const QColor bright(scaled(text.red(), 1.5), scaled(text.green(), 1.5), scaled(text.blue(), 1.5));
    return {bright,
            QColor(scaled(bright.blue(), 0.6), scaled(bright.red(), 0.6), scaled(bright.green(), 0.6))};
}

bool InsertTreePath(QTreeWidget& tree, const QString& path, UniformControl* record) {
    const QStringList components = Components(path);
    QTreeWidgetItem* item = tree.topLevelItem(0);
    if (!item || components.isEmpty()) return false;
    FindOrAddChild(*item, QStringLiteral("Defines"));
    FindOrAddChild(*item, QStringLiteral("Uniforms"));
    for (const QString& component : components)
        item = FindOrAddChild(*item, component);
    item->setData(0, kRecordRole, QVariant::fromValue(static_cast<void*>(record)));
    return true;
}

ControlTree::ControlTree(QWidget* parent) : QTreeWidget(parent) {
    setHeaderHidden(true);
    setIndentation(kIndentation);
    setVerticalScrollMode(ScrollPerPixel);
    setItemDelegate(new RowPainter(this));
    // A sheet of its own: the program's would win over a palette.
    const UiColours& colours = Theme().rows;
    setStyleSheet(QStringLiteral("QTreeView { background: %1; color: %2; }")
                      .arg(FromBgr(colours[UiColour::TreeViewBackground]).name(),
                           FromBgr(colours[UiColour::TreeViewText]).name()));
    new QTreeWidgetItem(this, {QStringLiteral("GLSL Shader")});
    expandAll();
    connect(this, &QTreeWidget::itemSelectionChanged, this, [this] {
        if (IsLeftShiftDown()) return;
        const QList<QTreeWidgetItem*> selected = selectedItems();
        Q_EMIT RecordSelected(selected.isEmpty() ? nullptr : RecordOf(selected.first()));
    });
}

void ControlTree::ShowControls(ControlSet& controls) {
    std::vector<std::pair<QString, UniformControl*>> wanted;
    for (const std::span records : {UniformsOf(controls), DefinesOf(controls)})
        for (UniformControl& record : records)
            wanted.emplace_back(record.treePath, &record);
    if (wanted == shown_) return;
    shown_ = std::move(wanted);

    const int scroll = verticalScrollBar()->value();
    const QList<QTreeWidgetItem*> selected = selectedItems();
    const QStringList row = selected.isEmpty() ? QStringList() : ComponentsOf(selected.first());
    const bool rootSelected = !selected.isEmpty() && row.isEmpty();
    const QSignalBlocker silence(this);
    setUpdatesEnabled(false);
    clear();
    new QTreeWidgetItem(this, {QStringLiteral("GLSL Shader")});
    for (const auto& [path, record] : shown_)
        InsertTreePath(*this, path, record);
    expandAll();
    if (QTreeWidgetItem* item = row.isEmpty() && !rootSelected ? nullptr : ItemAt(*this, row))
        setCurrentItem(item);
    verticalScrollBar()->setValue(scroll);
    setUpdatesEnabled(true);
}

UniformControl* ControlTree::RecordAt(const QString& treePath) const {
    const QStringList components = Components(treePath);
    return components.isEmpty() ? nullptr : RecordOf(ItemAt(*this, components));
}

// Beside the text the style fills a selected row, by the palette.
void ControlTree::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
    QStyleOptionViewItem row = option;
    row.palette.setColor(QPalette::Highlight, TreeColours(DepthOf(index), true).ground);
    QTreeWidget::drawRow(painter, row, index);
}

// The selected row comes into sight.
void ControlTree::resizeEvent(QResizeEvent* event) {
    QTreeWidget::resizeEvent(event);
    if (const QList<QTreeWidgetItem*> selected = selectedItems(); !selected.isEmpty())
        scrollToItem(selected.first());
}

// With Ctrl, a step of the font's size a turn, whatever the size of the delta.
void ControlTree::wheelEvent(QWheelEvent* event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier)) return QTreeWidget::wheelEvent(event);
    Zoom(event->angleDelta().y());
    event->accept();
}

void ControlTree::Zoom(int delta) {
    if (delta == 0) return;
    QFont font = this->font();
    const int height = QFontInfo(font).pixelSize() + (delta > 0 ? 1 : -1);
    font.setPixelSize(std::clamp(height, kSmallestFont, kLargestFont));
    setFont(font);
}

}  // namespace pixelgrove
