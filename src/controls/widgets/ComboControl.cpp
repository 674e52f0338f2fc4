#include "controls/widgets/ComboControl.h"

#include <QPushButton>
#include <algorithm>
#include <span>

#include "controls/ControlTemplates.h"
#include "controls/widgets/ControlCombo.h"
#include "controls/widgets/ControlFont.h"
#include "controls/widgets/ElidedLabel.h"

namespace pixelgrove {

namespace {

constexpr int kLayoutRows = 4;
constexpr size_t kMaxShownOptions = 128;  // the text may choose among more

}  // namespace

ComboControl::ComboControl(const UniformControl& record, QWidget* parent)
    : ControlWidget(parent),
      name_(new ElidedLabel(Qt::AlignLeft, this)),
      options_(new ControlCombo(this)),
      randomize_(new QPushButton(tr("Randomize"), this)) {
    randomize_->setCheckable(true);
    Show(record);
    state_.randomize = 0;
    randomize_->setChecked(false);
    connect(options_, &ControlCombo::activated, this, [this](int row) {
        state_.selection = row;
        ShowToolTip();
        Q_EMIT Changed();
    });
    connect(randomize_, &QPushButton::clicked, this, [this](bool down) {
        state_.randomize = down;
        Q_EMIT Changed();
    });
}

void ComboControl::Show(const UniformControl& record) {
    state_ = record.combo;
    state_.layoutRows = kLayoutRows;
    name_->SetText(record.displayName);
    options_->clear();
    const size_t shown = std::min(record.options.size(), kMaxShownOptions);
    for (const ControlOption& option : std::span(record.options).first(shown))
        options_->addItem(option.text, option.index);
    options_->setCurrentIndex(options_->findData(state_.selection));
    randomize_->setChecked(state_.randomize != 0);
    ShowToolTip();
}

void ComboControl::ShowToolTip() {
    const QString text = options_->currentText();
    options_->setToolTip(text.isEmpty() ? QString() : PlainToolTip(text));
}

void ComboControl::Save(UniformControl& record) const {
    record.combo.randomize = state_.randomize;
    record.combo.layoutRows = state_.layoutRows;
    // The options are the record's own, which the text may have made fewer meanwhile.
    if (state_.selection < record.combo.count) record.combo.selection = state_.selection;
}

void ComboControl::Load(const UniformControl& record) {
    Show(record);
    options_->WidenList();
}

void ComboControl::resizeEvent(QResizeEvent*) {
    TemplatePlaces places(ComboTemplate(state_.layoutRows), size());
    name_->setGeometry(places.Place(ControlPart::Name));
    options_->setGeometry(places.Place(ControlPart::Combo));
    randomize_->setGeometry(places.Place(ControlPart::Randomize));
    // As large as in a range of the same size, which has a row more.
    const QFont font = FittedFont(height() / kLayoutRows);
    name_->setFont(font);
    options_->setFont(font);
    randomize_->setFont(font);
    options_->WidenList();
}

}  // namespace pixelgrove
