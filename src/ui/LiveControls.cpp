#include "ui/LiveControls.h"

#include <QLabel>
#include <QLayout>

#include "controls/Annotations.h"
#include "controls/LiveValues.h"
#include "controls/widgets/ControlTree.h"
#include "controls/widgets/ControlWidget.h"
#include "core/AppState.h"
#include "windows/widgets/DialogScaler.h"

namespace pixelgrove {

LiveControls::LiveControls(ControlTree& tree, QWidget& area, QLabel& hint, QWidget& form, AppState& app,
                           ControlSet& controls)
    : tree_(tree), area_(area), hint_(hint), form_(form), app_(app), controls_(controls) {
    connect(&tree_, &ControlTree::RecordSelected, this, &LiveControls::Select);
    InitialiseSpeed(controls_);
    Publish();
}

void LiveControls::Publish() {
    PublishControlValues(controls_, widget_ ? widget_->Range() : nullptr);
}

void LiveControls::NoteEdit(bool hasControlWords) {
    // A key that only moves the caret is told too; a scan would take waves and handles back.
    if (IsImageShown() && app_.project.currentDocument->text == scanned_) return;
    if (hasControlWords || controls_.uniformCount + controls_.defineCount == 0) Rebuild();
}

bool LiveControls::IsImageShown() const {
    const EditingForm& project = app_.project;
    return project.currentDocument && project.currentDocument->hasText && project.currentStage == kStageImage;
}

void LiveControls::RebuildForFile() {
    const StageDocument& image = app_.project.documents[kStageImage];
    // A project that is restored may show another stage, a file may have gone into one.
    if (!image.hasText || (!IsImageShown() && image.text == scanned_)) return;
    FreeControlOptions(controls_);
    Read(image);
    if (!open_ || tree_.RecordAt(openPath_)) return;
    const ScalingPause pause(form_);
    Close();
}

void LiveControls::Rebuild() {
    if (IsImageShown()) Read(*app_.project.currentDocument);
}

void LiveControls::Read(const StageDocument& image) {
    scanned_ = image.text;
    ScanDefines(controls_, image.text);
    ScanUniforms(controls_, image.text, image.commentMap);
    // What the text says counts now, not what the open widget shows.
    PublishControlValues(controls_);
    tree_.ShowControls(controls_);
    // The control on screen may have come to another record. When it is gone, its line may be half typed: the
    // widget stays, and its record, which may describe something else now, is left alone.
    // A record of the same name is the control at another place of the tree.
    if (UniformControl* moved = open_ ? tree_.RecordAt(openPath_) : nullptr)
        open_ = moved;
    else if (HasOwnRecord())
        openPath_ = open_->treePath;
}

bool LiveControls::HasOwnRecord() const {
    return open_ && open_->displayName == openName_;
}

void LiveControls::Select(UniformControl* record) {
    const ScalingPause pause(form_);
    if (HasOwnRecord()) {
        // Not the same as in the frames, when the text was read anew meanwhile.
        widget_->Save(*open_);
        Publish();
        app_.run->restartRequested = uint32_t(open_->restartOnChange);
    }
    Close();
    if (record) Open(*record);
}

void LiveControls::Open(UniformControl& record) {
    open_ = &record;
    openPath_ = record.treePath;
    openName_ = record.displayName;
    hint_.hide();
    widget_ = ControlWidget::Make(record, &area_);
    // It fits its letters to its parts by itself.
    widget_->setProperty(kKeepFont, true);
    connect(widget_, &ControlWidget::Changed, this, &LiveControls::TakeChange);
    area_.layout()->addWidget(widget_);
    widget_->show();
    // Tab leads from the tree into it.
    QWidget* before = &tree_;
    for (QWidget* part : widget_->findChildren<QWidget*>()) {
        if (!(part->focusPolicy() & Qt::TabFocus) || part->window() != tree_.window()) continue;
        QWidget::setTabOrder(before, part);
        before = part;
    }
}

void LiveControls::Close() {
    if (!widget_) return;
    // Later: the selection may change inside one of its own events.
    widget_->disconnect(this);
    // A widget that hides passes the focus on to whatever control comes next.
    if (widget_->isAncestorOf(widget_->window()->focusWidget())) tree_.setFocus();
    widget_->hide();
    area_.layout()->removeWidget(widget_);
    widget_->deleteLater();
    widget_ = nullptr;
    open_ = nullptr;
    hint_.show();
}

void LiveControls::TakeChange() {
    if (!HasOwnRecord()) return;
    widget_->Save(*open_);
    Publish();
    app_.run->restartRequested = uint32_t(open_->restartOnChange);
    if (open_->restartOnChange && restartAsked) restartAsked();
}

}  // namespace pixelgrove
