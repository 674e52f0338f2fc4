// PaletteModel: files of palettes for a list of two columns, name and preview. A file is read when its
// preview is first asked for, so thousands of them cost nothing until they come in sight. Main thread.
#pragma once

#include <QAbstractTableModel>
#include <QImage>
#include <QStringList>
#include <memory>
#include <vector>

#include "media/PaletteBlock.h"

namespace pixelgrove {

enum class PaletteColumn { Name, Preview, Count };

// The palettes of the folder, by their names' order without regard to case, with their whole paths. Hidden
// files are left out. Empty for a folder that can't be read.
QStringList PaletteFilesIn(const QString& folder);

class PaletteModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    using QAbstractTableModel::QAbstractTableModel;

    // In place of the rows that are there.
    void SetFiles(const QStringList& paths);
    const QString& FileOf(int row) const { return rows_[size_t(row)].path; }

    // The palette's colours side by side, one pixel high; stretched to full size where interpolated. Null for
    // a file that is no palette, and for an empty palette.
    QImage Preview(int row, bool isInterpolated) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    struct Row {
        QString path, name;
        std::unique_ptr<PaletteBlock>
            palette;  // null until it is asked for; without colours where that fails
    };

    mutable std::vector<Row> rows_;
};

}  // namespace pixelgrove
