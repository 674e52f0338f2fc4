#include "ui/EditForm.h"

#include <QSplitter>
#include <utility>

#include "look/widgets/Icons.h"
#include "look/widgets/Theme.h"
#include "render/GlSetup.h"
#include "ui_EditWindow.h"

namespace pixelgrove {

namespace {

// How a splitter's two sides share it, at the base size and at any other.
void Share(QSplitter& splitter, int first, int second) {
    splitter.setStretchFactor(0, first);
    splitter.setStretchFactor(1, second);
    splitter.setSizes({first, second});
}

void SetUpButtons(const Ui::EditWindow& form) {
    const std::pair<QPushButton*, PlaybackIcon> buttons[] = {
        {form.startButton, PlaybackIcon::Start}, {form.playButton, PlaybackIcon::Play},
        {form.stopButton, PlaybackIcon::Stop},   {form.recordButton, PlaybackIcon::Record},
        {form.pauseButton, PlaybackIcon::Pause},
    };
    for (const auto& [button, icon] : buttons) {
        button->setIcon(MakePlaybackIcon(icon));
        button->setIconSize({16, 16});
        button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
        button->setFocusPolicy(Qt::TabFocus);  // a click leaves the focus where the user works
    }
    form.pauseButton->setCheckable(true);
}

}  // namespace

std::unique_ptr<Ui::EditWindow> MakeEditForm(QWidget& client) {
    auto form = std::make_unique<Ui::EditWindow>();
    client.setFont(FormFont());
    form->setupUi(&client);
    form->statusText->setFont(CodeFont());
    form->statusText->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    Share(*form->editorSplitter, 370, 188);
    Share(*form->lowerSplitter, 368, 370);
    Share(*form->controlSplitter, 82, 100);
    form->lineGutter->Attach(*form->editor);
    SetUpButtons(*form);
    return form;
}

void ShowProbe(const Ui::EditWindow& form, bool openGlOk) {
    const QString version = QStringLiteral("OpenGL v") + QString::fromStdString(OpenGlVersionText());
    form.openGlVersionText->setText(version);
    form.openGlVersionText->setToolTip(version);  // a driver's text may be longer than the field
    form.openGlFeaturesText->setText(openGlOk ? QStringLiteral("All features available")
                                              : QStringLiteral("Unsupported OpenGL version"));
}

}  // namespace pixelgrove
