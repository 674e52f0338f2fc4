#include "controls/widgets/ControlGenerator.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalBlocker>
#include <utility>

#include "look/widgets/Theme.h"
#include "ui_ControlDialog.h"
#include "windows/WindowRecord.h"
#include "windows/widgets/DialogScaler.h"

namespace pixelgrove {

ControlGenerator::ControlGenerator(QWidget* owner, std::function<void(const QString& line)> insert)
    : FrameDialog(owner), form_(std::make_unique<Ui::ControlDialog>()), insert_(std::move(insert)) {
    Client()->setFont(FormFont());
    form_->setupUi(Client());
    SetRegistryName(QString::fromUtf16(kControlCreatorDlg));
    FitToForm(*this);

    connect(form_->controlTypeCombo, &QComboBox::currentIndexChanged, this,
            &ControlGenerator::OnControlChosen);
    connect(form_->dataTypeCombo, &QComboBox::currentIndexChanged, this, &ControlGenerator::OnDataChosen);
    for (QLineEdit* edit : {form_->nameEdit, form_->parentEdit, form_->descriptionEdit, form_->optionsEdit,
                            form_->minimumEdit, form_->maximumEdit, form_->defaultEdit}) {
        edit->setMaxLength(int(kMaxGeneratorField));
        connect(edit, &QLineEdit::textChanged, this, &ControlGenerator::ShowLine);
    }
    connect(form_->insertButton, &QAbstractButton::clicked, this, &ControlGenerator::Insert);
    connect(form_->copyButton, &QAbstractButton::clicked, this, &ControlGenerator::Copy);
    connect(form_->cancelButton, &QAbstractButton::clicked, this, [this] { Done(false); });
    form_->controlTypeCombo->setFocus();
}

ControlGenerator::~ControlGenerator() = default;

GeneratorFields ControlGenerator::Fields() const {
    return {GeneratedControl(form_->controlTypeCombo->currentIndex()),
            GeneratedData(form_->dataTypeCombo->currentIndex()),
            form_->nameEdit->text(),
            form_->parentEdit->text(),
            form_->descriptionEdit->text(),
            form_->optionsEdit->text(),
            form_->minimumEdit->text(),
            form_->maximumEdit->text(),
            form_->defaultEdit->text()};
}

void ControlGenerator::ShowLine() {
    const std::optional<QString> line = GeneratedLine(Fields());
    if (!line) return;
    line_ = *line;
    form_->lineText->setPlainText(line_);
}

void ControlGenerator::OnControlChosen() {
    const bool isFlag = Fields().control == GeneratedControl::FlagDefine;
    form_->dataTypeCombo->setEnabled(!isFlag);
    form_->nameEdit->setEnabled(!isFlag);
    if (isFlag) {
        const QSignalBlocker silent(form_->dataTypeCombo);
        form_->dataTypeCombo->setCurrentIndex(int(GeneratedData::ItemSelect));
    }
    OnDataChosen();
}

void ControlGenerator::OnDataChosen() {
    const GeneratedData chosen = Fields().data;
    const bool isList = chosen == GeneratedData::ItemSelect;
    form_->optionsEdit->setEnabled(isList);
    for (QLineEdit* edit : {form_->minimumEdit, form_->maximumEdit, form_->defaultEdit}) {
        edit->setEnabled(!isList);
        edit->setText(NumberText(chosen, edit->text()));
    }
    ShowLine();
}

void ControlGenerator::Insert() const {
    if (!line_.isEmpty()) insert_(line_);
}

void ControlGenerator::Copy() const {
    if (!line_.isEmpty()) QGuiApplication::clipboard()->setText(line_);
}

}  // namespace pixelgrove
