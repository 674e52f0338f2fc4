#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>
#include <QUrl>
#include <QVBoxLayout>

#include "platform/Files.h"
#include "windows/widgets/Dialogs.h"
#include "windows/widgets/Questions.h"

namespace pixelgrove {

namespace {

constexpr QSize kFileChoiceSize{760, 480};
constexpr QSize kSmallestFileChoice{480, 300};

// The folder, or the nearest above it that is there; empty for none.
QString ExistingFolderOf(const QString& folder) {
    QString path = NormalizePath(folder);
    while (!path.isEmpty() && !QFileInfo(path).isDir()) {
        const QString parent = QFileInfo(path).path();
        if (parent == path || parent == QStringLiteral(".")) return QString();
        path = parent;
    }
    return path;
}

// Messages that the toolkit's file dialog would show come in the program's own frame.
class FileChoice : public QFileDialog {
  public:
    FileChoice(FrameDialog& frame, const FileQuestion& question, FileMode mode)
        : QFileDialog(frame.Client()), frame_(frame), question_(question) {
        setOption(QFileDialog::DontUseNativeDialog);
        setOption(QFileDialog::DontConfirmOverwrite);
        setWindowFlags(Qt::Widget);
        setSizeGripEnabled(false);
        setAcceptMode(question.forSaving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
        setFileMode(mode);
        if (mode == QFileDialog::Directory) setOption(QFileDialog::ShowDirsOnly);
        setViewMode(QFileDialog::Detail);
        if (!question.filters.isEmpty()) setNameFilters(question.filters);
        if (question.filterIndex > 0 && question.filterIndex < question.filters.size())
            selectNameFilter(question.filters[question.filterIndex]);
        ChooseSuffix();
        connect(this, &QFileDialog::filterSelected, this, &FileChoice::ChooseSuffix);
        QList<QUrl> places;
        const QString start =
            mode == QFileDialog::Directory ? ExistingFolderOf(question.folder) : question.folder;
        if (!start.isEmpty() && QDir().mkpath(start)) {
            setDirectory(start);
            places.append(QUrl::fromLocalFile(QDir(start).absolutePath()));
        }
        const QUrl home = QUrl::fromLocalFile(QDir::homePath());
        if (!places.contains(home)) places.append(home);
        setSidebarUrls(places);
        if (!question.fileName.isEmpty()) selectFile(question.fileName);
    }

    QStringList Paths() const { return completed_.isEmpty() ? selectedFiles() : QStringList(completed_); }
    QString Path() const { return Paths().value(0); }

  protected:
    void accept() override {
        const QStringList paths = Paths();
        if (paths.size() > 1) {
            for (const QString& path : paths) {
                if (QFileInfo::exists(path)) continue;
                SayNotFound(QFileInfo(path).fileName());
                return;
            }
        }
        const QFileInfo chosen(paths.value(0));
        // A folder's name leads into that folder.
        if (chosen.exists() || chosen.fileName().isEmpty()) {
            QFileDialog::accept();
            return;
        }
        if (question_.forSaving) {
            if (QFileInfo(chosen.absolutePath()).isDir())
                QFileDialog::accept();
            else
                SayNotFound(chosen.absolutePath());
            return;
        }
        QString path = chosen.filePath();
        if (!suffix_.isEmpty() && !chosen.fileName().contains(u'.')) path += u'.' + suffix_;
        if (!QFileInfo::exists(path)) {
            SayNotFound(QFileInfo(path).fileName());
            return;
        }
        completed_ = path;
        done(QDialog::Accepted);
    }

    void done(int result) override {
        if (result == QDialog::Accepted && question_.forSaving && QFileInfo::exists(Path())) {
            const QPointer<FileChoice> alive = this;
            const bool replace = MayReplace(QFileInfo(Path()).fileName());
            if (!alive || !replace) return;
        }
        QFileDialog::done(result);
        frame_.Done(result == QDialog::Accepted);
    }

  private:
    void ChooseSuffix() {
        const qsizetype filter = question_.filters.indexOf(selectedNameFilter());
        suffix_ = question_.suffixes.isEmpty() ? question_.defaultSuffix : question_.suffixes.value(filter);
        // For opening, the toolkit would also add it to the names of files that have none.
        if (question_.forSaving) setDefaultSuffix(suffix_);
    }

    void SayNotFound(const QString& name) {
        Ask(&frame_, question_.caption, QStringLiteral("%1 was not found.").arg(name),
            {{QStringLiteral("&OK"), QStringLiteral("okButton")}});
    }

    bool MayReplace(const QString& name) {
        return Ask(&frame_, question_.caption,
                   QStringLiteral("%1 already exists.\nDo you want to replace it?").arg(name),
                   {{QStringLiteral("&Yes"), QStringLiteral("yesButton")},
                    {QStringLiteral("&No"), QStringLiteral("noButton")}}) == 0;
    }

    FrameDialog& frame_;
    const FileQuestion& question_;
    QString suffix_;     // without the dot
    QString completed_;  // the path of a file that was typed without its suffix
};

// The chosen paths; empty when cancelled.
QStringList Choose(QWidget* owner, const FileQuestion& question, QFileDialog::FileMode mode) {
    auto* dialog = new FrameDialog(owner, FrameWindow::Kind::Dialog);
    dialog->setWindowTitle(question.caption);
    dialog->Client()->setObjectName(QStringLiteral("fileForm"));
    auto* rows = new QVBoxLayout(dialog->Client());
    rows->setContentsMargins(0, 0, 0, 0);
    auto* choice = new FileChoice(*dialog, question, mode);
    rows->addWidget(choice);
    dialog->SetMinimumClientSize(kSmallestFileChoice);
    dialog->ResizeClient(kFileChoiceSize);
    QStringList paths;
    ExecOnce(dialog, [&] { paths = choice->Paths(); });
    return paths;
}

}  // namespace

QString AskForFile(QWidget* owner, const FileQuestion& question) {
    const auto mode = question.forSaving ? QFileDialog::AnyFile : QFileDialog::ExistingFile;
    return Choose(owner, question, mode).value(0);
}

QStringList AskForFiles(QWidget* owner, const FileQuestion& question) {
    return Choose(owner, question, QFileDialog::ExistingFiles);
}

QString AskForFolder(QWidget* owner, const FileQuestion& question) {
    return Choose(owner, question, QFileDialog::Directory).value(0);
}

}  // namespace pixelgrove
