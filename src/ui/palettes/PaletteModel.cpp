#include "ui/palettes/PaletteModel.h"

#include <QDir>
#include <QFileInfo>

#include "media/PaletteFile.h"

namespace pixelgrove {

QStringList PaletteFilesIn(const QString& folder) {
    QStringList paths;
    if (folder.isEmpty()) return paths;
    const QDir place(folder);
    for (const QString& name : place.entryList(QDir::Files, QDir::Name | QDir::IgnoreCase))
        if (IsPaletteName(name)) paths.append(place.filePath(name));
    return paths;
}

void PaletteModel::SetFiles(const QStringList& paths) {
    beginResetModel();
    rows_.clear();
    rows_.reserve(size_t(paths.size()));
    for (const QString& path : paths)
        rows_.push_back({path, QFileInfo(path).fileName(), nullptr});
    endResetModel();
}

QImage PaletteModel::Preview(int row, bool isInterpolated) const {
    std::unique_ptr<PaletteBlock>& kept = rows_[size_t(row)].palette;
    if (!kept) {
        kept = std::make_unique<PaletteBlock>();
        LoadPaletteFile(rows_[size_t(row)].path, *kept);
    }
    if (kept->count == 0) return {};
    PaletteBlock shown = *kept;
    if (isInterpolated) FillPalette(shown);
    QImage image(shown.count, 1, QImage::Format_RGB32);
    auto* pixels = reinterpret_cast<QRgb*>(image.scanLine(0));
    for (int i = 0; i < shown.count; ++i)
        pixels[i] = qRgb(shown.red[i], shown.green[i], shown.blue[i]);
    return image;
}

int PaletteModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(rows_.size());
}

int PaletteModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(PaletteColumn::Count);
}

QVariant PaletteModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || role != Qt::DisplayRole) return {};
    return index.column() == int(PaletteColumn::Name) ? rows_[size_t(index.row())].name : QVariant();
}

QVariant PaletteModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return section == int(PaletteColumn::Name) ? QStringLiteral("Name") : QStringLiteral("Palette");
}

}  // namespace pixelgrove
