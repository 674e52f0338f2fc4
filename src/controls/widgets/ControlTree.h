// ControlTree: the live controls as a tree, "Defines" and "Uniforms" below one root, in the depth colours of
// the settings.
//
// Its leaves carry the records of a ControlSet, which outlives it. Main thread.
#pragma once

#include <QTreeWidget>
#include <utility>
#include <vector>

#include "core/ControlSet.h"

namespace pixelgrove {

class ControlTree : public QTreeWidget {
    Q_OBJECT

  public:
    // With the root alone.
    explicit ControlTree(QWidget* parent = nullptr);

    // Shows the records up to the counts, all expanded. Row and place of the view stay where their paths do,
    // and nobody is told. Where paths and records are those on screen already, nothing is touched.
    void ShowControls(ControlSet& controls);
    // The record of the leaf that this path leads to; null when it is not on screen.
    UniformControl* RecordAt(const QString& treePath) const;

  Q_SIGNALS:
    // The user selected another row: its record, null for a branch. Not while left Shift is down.
    void RecordSelected(pixelgrove::UniformControl* record);

  protected:
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void Zoom(int delta);

    std::vector<std::pair<QString, UniformControl*>> shown_;  // paths and records, in the order of insertion
};

// The last component's item, made where it is missing, gets the record; so do the branches "Defines" and
// "Uniforms". Empty components count for nothing. False, and nothing done, without a component or a root.
bool InsertTreePath(QTreeWidget& tree, const QString& path, UniformControl* record);

// A row's colours by its depth, 0 for the root, from the settings.
struct TreeRowColours {
    QColor text, ground;
};
TreeRowColours TreeColours(int depth, bool isSelected);

}  // namespace pixelgrove
