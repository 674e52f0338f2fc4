#include "windows/widgets/Dialogs.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStyle>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>

#include "look/widgets/Theme.h"

namespace pixelgrove {

namespace {

constexpr int kMargin = 14;
constexpr int kMinTextWidth = 220;
constexpr int kMaxTextWidth = 480;
constexpr int kMaxTextHeight = 600;
constexpr int kMinButtonWidth = 80;
constexpr QSize kFileChoiceSize{760, 480};
constexpr QSize kSmallestFileChoice{480, 300};

// The middle of the owner, or of the screen, kept inside the work area; the caption wins over the lower edge.
QRect PlaceFor(const QWidget* owner, const QSize& size) {
    const QWidget* window = owner ? owner->window() : nullptr;
    if (window && (!window->isVisible() || window->isMinimized())) window = nullptr;
    const QScreen* screen = window ? window->screen() : QGuiApplication::primaryScreen();
    const QRect area = screen ? screen->availableGeometry() : QRect(QPoint(), size);
    QRect rect(QPoint(), size);
    rect.moveCenter((window ? window->frameGeometry() : area).center());
    rect.moveRight(std::min(rect.right(), area.right()));
    rect.moveBottom(std::min(rect.bottom(), area.bottom()));
    rect.moveLeft(std::max(rect.left(), area.left()));
    rect.moveTop(std::max(rect.top(), area.top()));
    return rect;
}

// Shows the dialog, then deletes it; it may be gone before that, with its owner. The result is read from it
// by "read" when it was accepted, else it is "cancelled".
template <typename T, typename Read>
T ExecOnce(FrameDialog* dialog, T cancelled, const Read& read) {
    const QPointer<FrameDialog> alive = dialog;
    if (dialog->Exec()) cancelled = read();
    delete alive;
    return cancelled;
}

struct QuestionButton {
    QString caption;  // with its mnemonic
    QString name;
};

// Which button was pressed; the last one is the default, and what Escape and closing mean.
int Ask(QWidget* owner, const QString& caption, const QString& text, const QList<QuestionButton>& buttons,
        QStyle::StandardPixmap picture = QStyle::SP_MessageBoxWarning) {
    auto* dialog = new FrameDialog(owner, FrameWindow::Kind::FixedDialog);
    dialog->setWindowTitle(caption);
    QWidget* form = dialog->Client();
    form->setObjectName(QStringLiteral("questionForm"));

    auto* rows = new QVBoxLayout(form);
    rows->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    rows->setSpacing(kMargin);
    auto* upper = new QHBoxLayout;
    upper->setSpacing(kMargin);
    rows->addLayout(upper, 1);

    auto* icon = new QLabel(form);
    const int iconSize = form->style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, form);
    icon->setPixmap(form->style()
                        ->standardIcon(picture, nullptr, form)
                        .pixmap(QSize(iconSize, iconSize), dialog->devicePixelRatioF()));
    upper->addWidget(icon, 0, Qt::AlignTop);

    auto* label = new QLabel(form);
    label->setObjectName(QStringLiteral("questionText"));
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setFocusPolicy(Qt::ClickFocus);
    const QRect natural = label->fontMetrics().boundingRect(QRect(0, 0, kMaxTextWidth, kMaxTextHeight),
                                                            Qt::AlignLeft | Qt::TextWordWrap, text);
    // The label breaks lines by its own measure, which may be a little wider.
    label->setFixedWidth(std::clamp(natural.width() + 4, kMinTextWidth, kMaxTextWidth));
    label->setFixedHeight(std::min(kMaxTextHeight, label->heightForWidth(label->width())));
    upper->addWidget(label, 1, Qt::AlignTop);

    auto* lower = new QHBoxLayout;
    lower->addStretch(1);
    rows->addLayout(lower);
    int pressed = int(buttons.size()) - 1;
    QPushButton* last = nullptr;
    for (int i = 0; i < buttons.size(); ++i) {
        auto* button = new QPushButton(buttons[i].caption, form);
        button->setObjectName(buttons[i].name);
        button->setMinimumWidth(kMinButtonWidth);
        QObject::connect(button, &QPushButton::clicked, dialog, [dialog, &pressed, i] {
            pressed = i;
            dialog->Done(true);
        });
        // There is nothing to type into here, so a button's letter alone is enough.
        const QKeySequence mnemonic = QKeySequence::mnemonic(buttons[i].caption);
        if (!mnemonic.isEmpty())
            new QShortcut(QKeySequence(mnemonic[0].key()), dialog, button, [button] { button->click(); });
        lower->addWidget(button);
        last = button;
    }
    if (last) {
        last->setDefault(true);
        last->setFocus();
    }
    dialog->ResizeClient(rows->totalSizeHint());
    return ExecOnce(dialog, pressed, [&pressed] { return pressed; });
}

// Messages that the toolkit's file dialog would show come in the program's own frame.
class FileChoice : public QFileDialog {
  public:
    FileChoice(FrameDialog& frame, const FileQuestion& question)
        : QFileDialog(frame.Client()), frame_(frame), question_(question) {
        setOption(QFileDialog::DontUseNativeDialog);
        setOption(QFileDialog::DontConfirmOverwrite);
        setWindowFlags(Qt::Widget);
        setSizeGripEnabled(false);
        setAcceptMode(question.forSaving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
        setFileMode(question.forSaving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
        setViewMode(QFileDialog::Detail);
        if (!question.filters.isEmpty()) setNameFilters(question.filters);
        if (question.filterIndex > 0 && question.filterIndex < question.filters.size())
            selectNameFilter(question.filters[question.filterIndex]);
        ChooseSuffix();
        connect(this, &QFileDialog::filterSelected, this, &FileChoice::ChooseSuffix);
        QList<QUrl> places;
        if (!question.folder.isEmpty() && QDir().mkpath(question.folder)) {
            setDirectory(question.folder);
            places.append(QUrl::fromLocalFile(QDir(question.folder).absolutePath()));
        }
        const QUrl home = QUrl::fromLocalFile(QDir::homePath());
        if (!places.contains(home)) places.append(home);
        setSidebarUrls(places);
        if (!question.fileName.isEmpty()) selectFile(question.fileName);
    }

    QString Path() const { return completed_.isEmpty() ? selectedFiles().value(0) : completed_; }

  protected:
    void accept() override {
        const QFileInfo chosen(Path());
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

}  // namespace

FrameDialog::FrameDialog(QWidget* owner, Kind kind) : FrameWindow(kind, owner ? owner->window() : nullptr) {
    setWindowModality(Qt::ApplicationModal);
}

bool FrameDialog::Exec() {
    if (loop_) return false;
    QEventLoop loop;
    loop_ = &loop;
    accepted_ = false;
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    const QPointer<FrameDialog> self = this;
    SetFrameRect(FromQRect(PlaceFor(parentWidget(), size())));
    show();
    raise();
    activateWindow();
    loop.exec();
    if (!self) return false;
    loop_ = nullptr;
    hide();
    // Not every window manager gives the focus back by itself.
    if (QWidget* owner = parentWidget(); owner && owner->isVisible()) owner->activateWindow();
    return accepted_;
}

void FrameDialog::Done(bool accepted) {
    accepted_ = accepted;
    hide();
    if (loop_) loop_->quit();
}

void FrameDialog::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel)) {
        Done(false);
        return;
    }
    if (QPushButton* button = ButtonOfKey(*this, *event)) {
        button->click();
        return;
    }
    FrameWindow::keyPressEvent(event);
}

void FrameDialog::closeEvent(QCloseEvent* event) {
    FrameWindow::closeEvent(event);
    if (event->isAccepted()) Done(false);
}

QPushButton* ButtonOfKey(const QWidget& window, const QKeyEvent& key) {
    const bool enter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (!enter || (key.modifiers() & ~Qt::KeypadModifier)) return nullptr;
    auto* button = qobject_cast<QPushButton*>(window.focusWidget());
    if (!button)
        for (QPushButton* candidate : window.findChildren<QPushButton*>())
            if (candidate->isDefault() && candidate->isVisible()) button = candidate;
    return button;
}

Answer AskYesNoCancel(QWidget* owner, const QString& caption, const QString& text) {
    switch (Ask(owner, caption, text,
                {{QStringLiteral("&Yes"), QStringLiteral("yesButton")},
                 {QStringLiteral("&No"), QStringLiteral("noButton")},
                 {QStringLiteral("Cancel"), QStringLiteral("cancelButton")}})) {
        case 0:
            return Answer::Yes;
        case 1:
            return Answer::No;
        default:
            return Answer::Cancel;
    }
}

void ShowInformation(QWidget* owner, const QString& caption, const QString& text) {
    Ask(owner, caption, text, {{QStringLiteral("&OK"), QStringLiteral("okButton")}},
        QStyle::SP_MessageBoxInformation);
}

QString AskForFile(QWidget* owner, const FileQuestion& question) {
    auto* dialog = new FrameDialog(owner, FrameWindow::Kind::Dialog);
    dialog->setWindowTitle(question.caption);
    dialog->Client()->setObjectName(QStringLiteral("fileForm"));
    auto* rows = new QVBoxLayout(dialog->Client());
    rows->setContentsMargins(0, 0, 0, 0);
    auto* choice = new FileChoice(*dialog, question);
    rows->addWidget(choice);
    dialog->SetMinimumClientSize(kSmallestFileChoice);
    dialog->ResizeClient(kFileChoiceSize);
    return ExecOnce(dialog, QString(), [choice] { return choice->Path(); });
}

}  // namespace pixelgrove
