#include "recording/widgets/KeyComboDialog.h"

#include "look/widgets/Theme.h"
#include "recording/RecorderSettings.h"
#include "recording/keyboard/KeyboardKeys.h"
#include "ui_KeyComboDialog.h"
#include "windows/widgets/DialogScaler.h"
#include "windows/widgets/Questions.h"

namespace pixelgrove {

KeyComboDialog::KeyComboDialog(QWidget* owner, RecorderSettings& recorder, RecorderTable& table)
    : FrameDialog(owner), form_(std::make_unique<Ui::KeyComboDialog>()), recorder_(recorder), table_(table) {
    Client()->setFont(FormFont());
    form_->setupUi(Client());
    FitToForm(*this);

    connect(form_->comboList, &QComboBox::currentIndexChanged, this, [this] {
        ShowRow(TakeSelectedKeyCombo(*form_->comboList, table_));
        ShowState();
    });
    for (QLineEdit* edit : {form_->startEdit, form_->stopEdit})
        connect(edit, &QLineEdit::editingFinished, this, [this, edit] { Normalise(*edit); });
    connect(form_->addButton, &QAbstractButton::clicked, this, &KeyComboDialog::Add);
    connect(form_->deleteButton, &QAbstractButton::clicked, this, &KeyComboDialog::Delete);
    connect(form_->okButton, &QAbstractButton::clicked, this, &KeyComboDialog::Accept);
    connect(form_->cancelButton, &QAbstractButton::clicked, this, [this] { Done(false); });
    const KeyCombo chosen = ChosenKeyCombo(table_, recorder_);
    ShowRow(&chosen);
    FillList();
    form_->comboList->setFocus();
}

KeyComboDialog::~KeyComboDialog() = default;

void KeyComboDialog::FillList() {
    ShowRow(FillKeyComboList(*form_->comboList, table_, recorder_.friendlyName));
    ShowState();
}

void KeyComboDialog::ShowRow(const KeyCombo* row) {
    if (row) Edits().Show(*row);
}

KeyComboEdits KeyComboDialog::Edits() const {
    return {*form_->nameEdit, *form_->startEdit, *form_->stopEdit};
}

void KeyComboDialog::ShowState() {
    form_->deleteButton->setEnabled(form_->comboList->currentIndex() >= 0);
    form_->hintLabel->setText(NoteOnKeyCombos(form_->startEdit->text(), form_->stopEdit->text()));
}

void KeyComboDialog::Normalise(QLineEdit& edit) {
    edit.setText(NormaliseKeyCombo(edit.text(), KeyNames()));
    ShowState();
}

void KeyComboDialog::Add() {
    const QList<QuestionButton> ok{{QStringLiteral("&OK"), QStringLiteral("okButton")}};
    const KeyCombo combo = Edits().Shown();
    if (combo.name.isEmpty()) {
        Ask(this, QStringLiteral("Name Required"),
            QStringLiteral("Please provide a name for the keystroke combination."), ok);
        return;
    }
    if (FindKeyCombo(table_, combo.name)) {
        Ask(this, QStringLiteral("Name Exists"),
            QStringLiteral("A combination with this name already exists. Please use a different name."), ok);
        return;
    }
    if (!AddKeyCombo(table_, combo)) {
        Ask(this, QStringLiteral("Error"),
            QStringLiteral("Failed to add the key combination. Please try again."), ok,
            QStyle::SP_MessageBoxCritical);
        return;
    }
    FillList();
    ShowInformation(this, QStringLiteral("Success"), QStringLiteral("Key combination added successfully."));
}

void KeyComboDialog::Delete() {
    DeleteKeyCombo(table_, form_->comboList->currentText(), recorder_);
    FillList();
}

void KeyComboDialog::Accept() {
    ChooseKeyCombo(table_, recorder_, Edits().Shown());
    Done(true);
}

}  // namespace pixelgrove
