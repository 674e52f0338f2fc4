#include "windows/widgets/Questions.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>

#include "windows/widgets/Dialogs.h"

namespace pixelgrove {

namespace {

constexpr int kMargin = 14;
constexpr int kMinTextWidth = 220;
constexpr int kMaxTextWidth = 480;
constexpr int kMaxTextHeight = 600;
constexpr int kMinButtonWidth = 80;

}  // namespace

int Ask(QWidget* owner, const QString& caption, const QString& text, const QList<QuestionButton>& buttons,
        QStyle::StandardPixmap picture) {
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
    int answer = pressed;
    ExecOnce(dialog, [&] { answer = pressed; });
    return answer;
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

}  // namespace pixelgrove
