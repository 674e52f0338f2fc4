#include "recording/widgets/RecordingDialog.h"

#include <QPointer>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>
#include <algorithm>
#include <optional>

#include "core/AppState.h"
#include "look/widgets/Theme.h"
#include "media/Bitmap.h"
#include "platform/Random.h"
#include "recording/FramePath.h"
#include "recording/widgets/KeyComboDialog.h"
#include "ui_RecordingDialog.h"
#include "windows/widgets/DialogScaler.h"

namespace pixelgrove {

namespace {

constexpr int kMaxPathField = 258;

// Nothing when the field is empty or its number too large for one.
std::optional<uint32_t> NumberIn(const QLineEdit& edit) {
    bool isNumber = false;
    const uint32_t number = edit.text().toUInt(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

bool IsFrameSide(const QLineEdit& edit) {
    const std::optional<uint32_t> side = NumberIn(edit);
    return side && *side >= 1 && *side <= uint32_t(kMaxBitmapSide);
}

// The greatest for any number beyond it.
std::optional<uint32_t> DelayIn(const QLineEdit& edit) {
    if (edit.text().isEmpty()) return {};
    constexpr uint32_t kMost = kMaxRecordFrameDelayMs;
    return std::min(NumberIn(edit).value_or(kMost), kMost);
}

}  // namespace

RecordingDialog::RecordingDialog(QWidget* owner, AppState& app, RecorderSettings& recorder,
                                 RecorderTable& table)
    : FrameDialog(owner),
      form_(std::make_unique<Ui::RecordingDialog>()),
      app_(app),
      recorder_(recorder),
      table_(table) {
    Client()->setFont(FormFont());
    form_->setupUi(Client());
    FitToForm(*this);

    const auto* digits = new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), this);
    for (QLineEdit* edit : {form_->widthEdit, form_->heightEdit, form_->delayEdit})
        edit->setValidator(digits);
    for (QLineEdit* edit : {form_->folderEdit, form_->formatEdit})
        edit->setMaxLength(kMaxPathField);
    ShowSettings();
    Connect();
}

RecordingDialog::~RecordingDialog() = default;

void RecordingDialog::ShowSettings() {
    recorder_.method = std::min(recorder_.method, 1u);
    QRadioButton* method = recorder_.method == 0 ? form_->thirdPartyRadio : form_->framesRadio;
    method->setChecked(true);
    method->setFocus();
    ShowCombo(ChosenKeyCombo(table_, recorder_));
    FillList();
    ShowSize(app_.run->recordWidth, app_.run->recordHeight);
    ShowSizeNote();
    const FramePathTemplate path = recorder_.framePath->Copy();
    form_->folderEdit->setText(path.folder);
    form_->formatEdit->setText(path.format);
    ShowSample(path.folder, path.format);
    form_->delaySlider->setMaximum(kMaxRecordFrameDelayMs);
    form_->delaySlider->setValue(int(app_.run->recordFrameDelayMs));
    form_->delayEdit->setText(QString::number(app_.run->recordFrameDelayMs));
}

void RecordingDialog::Connect() {
    connect(form_->comboList, &QComboBox::currentIndexChanged, this, [this] {
        if (const KeyCombo* row = TakeSelectedKeyCombo(*form_->comboList, table_)) ShowCombo(*row);
    });
    const struct {
        QAbstractButton* button;
        uint32_t width, height;
    } sizes[] = {{form_->size480pButton, 720, 480},    {form_->size720pButton, 1280, 720},
                 {form_->size1080pButton, 1920, 1080}, {form_->size1440pButton, 2560, 1440},
                 {form_->size4KButton, 3840, 2160},    {form_->size8KButton, 7680, 4320}};
    for (const auto& size : sizes)
        connect(size.button, &QAbstractButton::clicked, this,
                [this, size] { ShowSize(size.width, size.height); });
    connect(form_->rotateButton, &QAbstractButton::clicked, this, [this] {
        const QString width = form_->widthEdit->text();
        form_->widthEdit->setText(form_->heightEdit->text());
        form_->heightEdit->setText(width);
    });
    for (QLineEdit* edit : {form_->widthEdit, form_->heightEdit})
        connect(edit, &QLineEdit::textChanged, this, &RecordingDialog::ShowSizeNote);
    connect(form_->delaySlider, &QSlider::valueChanged, this, &RecordingDialog::TakeSliderDelay);
    // What is typed moves the slider, but is in force only with OK.
    connect(form_->delayEdit, &QLineEdit::textEdited, this, [this] {
        const QSignalBlocker silent(form_->delaySlider);
        if (const auto delay = DelayIn(*form_->delayEdit)) form_->delaySlider->setValue(int(*delay));
    });
    connect(form_->newButton, &QAbstractButton::clicked, this, &RecordingDialog::EditCombos);
    connect(form_->browseButton, &QAbstractButton::clicked, this, &RecordingDialog::ChooseFolder);
    connect(form_->demoButton, &QAbstractButton::clicked, this,
            [this] { ShowSample(form_->folderEdit->text(), form_->formatEdit->text()); });
    connect(form_->okButton, &QAbstractButton::clicked, this, &RecordingDialog::Accept);
    connect(form_->cancelButton, &QAbstractButton::clicked, this, [this] { Done(false); });
}

void RecordingDialog::FillList() {
    if (const KeyCombo* row = FillKeyComboList(*form_->comboList, table_, recorder_.friendlyName))
        ShowCombo(*row);
}

KeyComboEdits RecordingDialog::Edits() const {
    return {*form_->nameEdit, *form_->startEdit, *form_->stopEdit};
}

void RecordingDialog::ShowCombo(const KeyCombo& combo) {
    Edits().Show(combo);
    form_->noteLabel->setText(NoteOnKeyCombos(combo.start, combo.stop));
}

void RecordingDialog::ShowSize(uint32_t width, uint32_t height) {
    form_->widthEdit->setText(QString::number(width));
    form_->heightEdit->setText(QString::number(height));
}

void RecordingDialog::ShowSizeNote() {
    const bool isSize = IsFrameSide(*form_->widthEdit) && IsFrameSide(*form_->heightEdit);
    form_->sizeNote->setText(
        isSize ? QString()
               : QStringLiteral("No frame has this size. Its sides can be 1 to %1.").arg(kMaxBitmapSide));
}

void RecordingDialog::ShowSample(const QString& folder, const QString& format) {
    constexpr uint32_t kMaxSampleNumber = 0x7FFF;
    form_->sampleEdit->setText(PreviewFramePath({folder, format}, SystemRandom32() & kMaxSampleNumber).text);
    form_->sampleEdit->setCursorPosition(0);
}

void RecordingDialog::EditCombos() {
    const QPointer<RecordingDialog> self = this;
    const bool isChosen = ExecOnce(new KeyComboDialog(this, recorder_, table_), [] {});
    if (!self) return;
    // Its OK chose what its fields held, which need not be a row of the list.
    if (isChosen) ShowCombo(ChosenKeyCombo(table_, recorder_));
    FillList();
}

void RecordingDialog::ChooseFolder() {
    const QPointer<RecordingDialog> self = this;
    FileQuestion question;
    question.caption = QStringLiteral("Select the folder where you want to save the frame files.");
    question.folder = form_->folderEdit->text();
    const QString folder = AskForFolder(this, question);
    if (!self || folder.isEmpty()) return;
    form_->folderEdit->setText(folder);
    // By the format in force, which isn't the one that is being typed.
    ShowSample(folder, recorder_.framePath->Copy().format);
}

void RecordingDialog::TakeSliderDelay(int delayMs) {
    form_->delayEdit->setText(QString::number(delayMs));
    app_.run->recordFrameDelayMs = uint32_t(delayMs);
}

void RecordingDialog::Accept() {
    recorder_.method = form_->framesRadio->isChecked() ? 1 : 0;
    RunControls& run = *app_.run;
    if (const auto width = NumberIn(*form_->widthEdit)) run.recordWidth = *width;
    if (const auto height = NumberIn(*form_->heightEdit)) run.recordHeight = *height;
    if (const auto delay = DelayIn(*form_->delayEdit)) run.recordFrameDelayMs = *delay;
    {
        const Hold path(*recorder_.framePath);
        path->folder = form_->folderEdit->text();
        path->format = form_->formatEdit->text();
    }
    ChooseKeyCombo(table_, recorder_, Edits().Shown());
    Done(true);
}

}  // namespace pixelgrove
