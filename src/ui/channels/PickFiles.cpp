#include "ui/channels/PickFiles.h"

#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>

#include "platform/Files.h"

namespace pixelgrove {

namespace {

constexpr qsizetype kMaxFilledFilter = 259;  // code units

const QString kAllFiles = QStringLiteral("All Files (*.*)\t*.*\t\t");

const QString kImageFilter = QStringLiteral(
    "BMP (*.bmp,*.dib,*.rle)\t*.bmp;*.dib;*.rle\t"
    "JPEG (*.jpg,*.jpeg)\t*.jpg;*.jpeg;\t"
    "PNG (*.png)\t*.png;\t"
    "GIF (*.gif)\t*.gif;\t"
    "TIFF (*.tiff,*.tif)\t*.tiff;*.tif;\t"
    "Animation (*.1)\t*.1\t"
    "Pictures\t*.jpg;*.jpeg;*.tif;*.tiff;*.png;*.gif;*.bmp;*.dib;*.rle;\t"
    "All files (*.*)\t *.*\t\t");

// One for each entry of kImageFilter. A name typed under "PNG" gets "pmg": it stays so, as it always was.
const QStringList kImageSuffixes = {
    QStringLiteral("bmp"), QStringLiteral("jpg"), QStringLiteral("pmg"), QStringLiteral("gif"),
    QStringLiteral("tif"), QStringLiteral("1"),   QStringLiteral("png"), QString()};
constexpr int kPicturesEntry = 6;

// With its dot; empty for a name without one.
QString ExtensionOf(const QString& path) {
    const QString name = NormalizePath(path).section(u'/', -1);
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot < 0 ? QString() : name.sliced(dot);
}

// "%s Files" and the pattern itself, where that isn't too long.
QString FilledFilter(const QString& pattern) {
    const QString filled = pattern + QStringLiteral(" Files\t") + pattern + QStringLiteral("\t\t");
    return filled.size() <= kMaxFilledFilter ? filled : kAllFiles;
}

// Texts and patterns by turns.
QString CompleteFilter(const QString& filter, const QString& path) {
    const qsizetype tab = filter.indexOf(u'\t');
    if (tab >= 0 && (filter.indexOf(QStringLiteral("\t\t"), tab) > tab || filter.endsWith(u'\t')))
        return filter;
    if (!filter.isEmpty()) return FilledFilter(filter);
    const QString extension = ExtensionOf(path);
    return extension.size() >= 2 ? FilledFilter(extension.sliced(1)) : kAllFiles;
}

// The toolkit splits patterns by blanks, and "*.*" asks for a dot in the name there. A bare word is an
// extension.
QString PatternsOf(QStringView part) {
    QStringList patterns;
    for (const QStringView piece : part.split(u';')) {
        QString pattern = piece.trimmed().toString();
        if (pattern.isEmpty()) continue;
        if (pattern == QStringLiteral("*.*")) pattern = QStringLiteral("*");
        if (!pattern.contains(u'*') && !pattern.contains(u'.')) pattern.prepend(QStringLiteral("*."));
        patterns.append(pattern);
    }
    return patterns.join(u' ');
}

// "Text (patterns)" for each pair; the patterns that the text itself ends in give way to them.
QStringList ToNameFilters(const QString& filter) {
    QStringList entries;
    const QStringList parts = filter.split(u'\t');
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString text = parts[i];
        const QString patterns = PatternsOf(parts[i + 1]);
        if (text.isEmpty() || patterns.isEmpty()) break;
        if (text.endsWith(u')')) text.truncate(text.lastIndexOf(u'('));
        entries.append(text.trimmed() + QStringLiteral(" (") + patterns + u')');
    }
    return entries;
}

// What stands behind the last dot of the first text, as far as it can be an extension.
QString SuffixOf(const QString& filter) {
    const QString text = filter.section(u'\t', 0, 0);
    const qsizetype start = text.lastIndexOf(u'.') + 1;
    if (start == 0) return {};
    const auto end = std::find_if_not(text.begin() + start, text.end(),
                                      [](QChar c) { return c.isLetterOrNumber() || c == u'_' || c == u'-'; });
    return text.sliced(start, end - text.begin() - start);
}

int FirstImageEntry(const QString& path) {
    const QString extension = ExtensionOf(path);
    const qsizetype at = extension.size() < 2 ? -1 : kImageFilter.indexOf(extension, 0, Qt::CaseInsensitive);
    return at < 0 ? kPicturesEntry : int(QStringView(kImageFilter).first(at).count(u'\t') / 2);
}

QString& LastFolder() {
    static QString folder;
    return folder;
}

}  // namespace

QString PickFile(const UserDialogs& dialogs, const QString& path, const QString& startFolder,
                 const QString& filter, bool forSave) {
    const QString completed = CompleteFilter(filter, path);
    FileQuestion question;
    question.caption = forSave ? QStringLiteral("Save As") : QStringLiteral("Open");
    question.folder = NormalizePath(startFolder);
    if (forSave) question.fileName = NormalizePath(path);
    question.filters = ToNameFilters(completed);
    question.defaultSuffix = SuffixOf(completed);
    question.forSaving = forSave;
    return dialogs.askForFile(question);
}

QString PickImageFile(const UserDialogs& dialogs, const QString& path, const QString& startFolder) {
    FileQuestion question;
    question.caption = QStringLiteral("Open Image");
    question.folder = NormalizePath(startFolder.isEmpty()
                                        ? QStandardPaths::writableLocation(QStandardPaths::PicturesLocation)
                                        : startFolder);
    question.filters = ToNameFilters(kImageFilter);
    question.suffixes = kImageSuffixes;
    question.filterIndex = FirstImageEntry(path);
    QString chosen = dialogs.askForFile(question);
    if (!chosen.isEmpty()) LastFolder() = QFileInfo(chosen).absolutePath();
    return chosen;
}

QString LastImageFolder() {
    return LastFolder();
}

}  // namespace pixelgrove
