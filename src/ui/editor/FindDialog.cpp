#include "ui/editor/FindDialog.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>

#include "look/widgets/Theme.h"
#include "platform/TextScan.h"
#include "ui_FindDialog.h"
#include "ui_ReplaceDialog.h"
#include "windows/widgets/DialogScaler.h"
#include "windows/widgets/Dialogs.h"

namespace pixelgrove {

FindDialog::Fields FindDialog::SetUpForm(QWidget& client, bool replace) {
    client.setFont(FormFont());
    const auto common = [&client](auto& form) {
        form.setupUi(&client);
        return Fields{form.findEdit,        form.wholeWordCheck, form.matchCaseCheck,
                      form.wrapAroundCheck, form.findNextButton, form.cancelButton};
    };
    if (replace) {
        Ui::ReplaceDialog form;
        Fields fields = common(form);
        fields.with = form.replaceEdit;
        fields.replace = form.replaceButton;
        fields.replaceAll = form.replaceAllButton;
        return fields;
    }
    Ui::FindDialog form;
    Fields fields = common(form);
    fields.up = form.upRadio;
    fields.down = form.downRadio;
    return fields;
}

FindDialog::FindDialog(bool replace, const FindTexts& texts, QWidget* owner)
    : FrameWindow(Kind::Dialog, owner), fields_(SetUpForm(*Client(), replace)) {
    setAttribute(Qt::WA_DeleteOnClose);
    FitToForm(*this);

    fields_.what->setText(texts.what);
    if (fields_.with) fields_.with->setText(texts.with);
    fields_.wrapAround->setChecked(true);
    if (fields_.down) fields_.down->setChecked(true);
    Connect();
    fields_.what->setFocus();
    fields_.what->selectAll();
}

void FindDialog::Connect() {
    const std::pair<QAbstractButton*, FindAction> actions[] = {{fields_.findNext, FindAction::FindNext},
                                                               {fields_.replace, FindAction::Replace},
                                                               {fields_.replaceAll, FindAction::ReplaceAll}};
    const auto enableActions = [this, actions] {
        for (const auto& [button, action] : actions)
            if (button) button->setEnabled(!fields_.what->text().isEmpty());
    };
    for (const auto& [button, action] : actions)
        if (button)
            connect(button, &QAbstractButton::clicked, this,
                    [this, action = action] { Q_EMIT Asked(action); });
    enableActions();
    connect(fields_.what, &QLineEdit::textChanged, this, enableActions);
    connect(fields_.what, &QLineEdit::textChanged, this, &FindDialog::TextsChanged);
    if (fields_.with) connect(fields_.with, &QLineEdit::textChanged, this, &FindDialog::TextsChanged);
    connect(fields_.cancel, &QAbstractButton::clicked, this, &QWidget::close);
}

FindRequest FindDialog::Request() const {
    FindRequest request;
    request.terms = {WithLineFeeds(fields_.what->text()), fields_.matchCase->isChecked(),
                     fields_.wholeWord->isChecked()};
    request.down = !fields_.up || !fields_.up->isChecked();
    request.wrapAround = fields_.wrapAround->isChecked();
    return request;
}

void FindDialog::StoreTexts(FindTexts& texts) const {
    texts.what = fields_.what->text();
    if (fields_.with) texts.with = fields_.with->text();
}

void FindDialog::keyPressEvent(QKeyEvent* event) {
    if (!TakeDialogKey(*this, *event)) FrameWindow::keyPressEvent(event);
}

}  // namespace pixelgrove
