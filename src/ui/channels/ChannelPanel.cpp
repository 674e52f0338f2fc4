#include "ui/channels/ChannelPanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QCursor>
#include <QEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <array>
#include <utility>

#include "commands/Commands.h"
#include "core/AppState.h"
#include "platform/SynchronizedValue.h"
#include "project/ProjectModel.h"
#include "render/Player.h"
#include "render/RenderThread.h"
#include "ui/channels/ChannelDrop.h"
#include "ui/channels/ChannelMenu.h"
#include "ui/channels/ChannelThumbnail.h"

namespace pixelgrove {

namespace {

struct ComboRow {
    const char16_t* text;
    uint32_t data;
};
constexpr ComboRow kFilters[] = {
    {u"Nearest", gl::kNearest},
    {u"Linear", gl::kLinear},
    {u"MipMap", gl::kLinearMipmapLinear},
};
constexpr ComboRow kWraps[] = {
    {u"Clamp", gl::kClampToEdge},
    {u"Repeat", gl::kRepeat},
    {u"Mirror Repeat", gl::kMirroredRepeat},
};

template <size_t N>
void Fill(QComboBox& combo, const ComboRow (&rows)[N]) {
    for (const ComboRow& row : rows)
        combo.addItem(QString::fromUtf16(row.text), row.data);
    combo.setCurrentIndex(0);
}

// A value that is none of the entries leaves the combo as it was.
void ShowData(QComboBox& combo, uint32_t data) {
    const int index = combo.findData(data);
    if (index >= 0) combo.setCurrentIndex(index);
}

// All ones when nothing is selected.
uint32_t SelectedData(const QComboBox& combo) {
    return combo.currentIndex() < 0 ? ~0u : combo.currentData().toUInt();
}

QEvent::Type PreviewEvent() {
    static const auto type = QEvent::Type(QEvent::registerEventType());
    return type;
}

}  // namespace

// Where a run leaves its previews, newest only. One event is under way at a time, so that a slow window gets
// fewer frames and not a queue of them.
class PreviewMailbox {
  public:
    explicit PreviewMailbox(QObject& receiver) : receiver_(receiver) {}

    void Put(ChannelPreview preview) {
        if (preview.channel < 0 || preview.channel >= kChannelCount) return;
        const Hold waiting(waiting_);
        waiting->previews[size_t(preview.channel)] = std::move(preview);
        if (std::exchange(waiting->isPosted, true)) return;
        QCoreApplication::postEvent(&receiver_, new QEvent(PreviewEvent()));
    }

    // Those that came since the last call; the others have no bitmap.
    std::array<ChannelPreview, kChannelCount> Take() { return waiting_.Exchange({}).previews; }

  private:
    QObject& receiver_;
    struct Waiting {
        std::array<ChannelPreview, kChannelCount> previews;
        bool isPosted = false;
    };
    SynchronizedValue<Waiting> waiting_;
};

ChannelPanel::ChannelPanel(QWidget& form, AppState& app, const Player& player, const UserDialogs& dialogs,
                           std::function<void(int commandId)> runCommand)
    : form_(form), app_(app), player_(player), dialogs_(dialogs), runCommand_(std::move(runCommand)) {
    for (uint32_t i = 0; i < kChannelCount; ++i) {
        groups_[i] = FindGroup(i);
        Connect(i);
    }
}

ChannelInput& ChannelPanel::ShownChannel(uint32_t channel) const {
    return app_.project.channels[app_.project.currentStage][channel];
}

ChannelPanel::Group ChannelPanel::FindGroup(uint32_t channel) const {
    const auto find = [&]<typename W>(W*& control, const char* name) {
        control = form_.findChild<W*>(QString::fromLatin1(name) + QString::number(channel));
        Q_ASSERT(control);
    };
    Group group;
    QLabel *filterLabel = nullptr, *wrapLabel = nullptr;
    find(group.button, "channelButton");
    find(group.thumbnail, "channelThumbnail");
    find(group.name, "channelName");
    find(filterLabel, "filterLabel");
    find(group.filter, "filterCombo");
    find(wrapLabel, "wrapLabel");
    find(group.wrap, "wrapCombo");
    find(group.vflip, "vflipCheck");
    group.sampling = {filterLabel, group.filter, wrapLabel, group.wrap, group.vflip};
    return group;
}

void ChannelPanel::Connect(uint32_t channel) {
    const Group& group = groups_[channel];
    group.thumbnail->SetUp(app_.project, channel);
    Fill(*group.filter, kFilters);
    Fill(*group.wrap, kWraps);
    group.vflip->setChecked(false);
    connect(group.button, &QPushButton::clicked, this,
            [this, channel] { runCommand_(kCmdChannelFirst + int(channel)); });
    connect(group.thumbnail, &ChannelThumbnail::Clicked, this,
            [this, channel] { runCommand_(kCmdChannelFirst + int(channel)); });
    // The program that it comes from waits for the drop to end; a message may stand for long.
    connect(
        group.thumbnail, &ChannelThumbnail::MediumDropped, this,
        [this, channel](const QString& path) { TakeMedium(channel, path); }, Qt::QueuedConnection);
    connect(group.filter, &QComboBox::activated, this, [this, channel] {
        ShownChannel(channel).filter = SelectedData(*groups_[channel].filter);
        WriteThrough(channel);
    });
    connect(group.wrap, &QComboBox::activated, this, [this, channel] {
        ShownChannel(channel).wrap = SelectedData(*groups_[channel].wrap);
        WriteThrough(channel);
    });
    connect(group.vflip, &QCheckBox::clicked, this, [this, channel](bool checked) {
        ShownChannel(channel).vflip = checked ? 1 : 0;
        WriteThrough(channel);
    });
}

void ChannelPanel::Refresh() {
    const bool hasPreviews =
        player_.currentRun && app_.run->showChannelBuffers != 0 && shownStage_ == app_.project.currentStage;
    shownStage_ = app_.project.currentStage;
    if (player_.currentRun) player_.currentRun->previewStage = app_.project.currentStage;
    for (uint32_t i = 0; i < kChannelCount; ++i) {
        const ChannelInput& channel = app_.project.channels[app_.project.currentStage][i];
        if (!hasPreviews || channel.kind != kChannelBuffer) groups_[i].thumbnail->ShowPreview(nullptr);
        ShowGroup(groups_[i], channel, app_.project.currentStage != kStageCommon);
    }
}

void ChannelPanel::ShowGroup(const Group& group, const ChannelInput& channel, bool hasInputs) {
    const bool isUsed = channel.kind != kChannelUnused;
    group.button->setVisible(hasInputs);
    group.thumbnail->setVisible(hasInputs);
    group.name->setVisible(hasInputs);
    for (QWidget* control : group.sampling)
        control->setVisible(hasInputs && isUsed);
    const bool isStage = channel.kind == kChannelBuffer || channel.kind == kChannelCubeA;
    group.name->setText(isStage ? StageName(uint32_t(channel.sourceStage)) : ChannelTypeName(channel.kind));
    ShowData(*group.wrap, channel.wrap);
    ShowData(*group.filter, channel.filter);
    group.vflip->setChecked(channel.vflip != 0);
    group.thumbnail->update();
}

void ChannelPanel::WriteThrough(uint32_t channel) {
    ChannelInput& changed = ShownChannel(channel);
    changed.samplerCountdown = 2;
    // Also while the run still compiles: it takes this up with its first frame.
    if (player_.currentRun) player_.currentRun->samplers.Post(app_.project.currentStage, channel, changed);
    OnStageChanged(app_.project, app_.project.currentStage);
}

void ChannelPanel::PopUpMenu(uint32_t channel) {
    if (channel >= uint32_t(kChannelCount)) return;
    const uint32_t stage = app_.project.currentStage;
    const bool isUsed = ShownChannel(channel).kind != kChannelUnused;
    QMenu* menu = MakeChannelMenu(&form_, isUsed, [this, stage, channel](int entryId) {
        if (RunChannelMenu(entryId, app_.project.channels[stage][channel], dialogs_))
            OnStageChanged(app_.project, stage);
        Refresh();
    });
    menu->popup(QCursor::pos());
}

void ChannelPanel::TakeMedium(uint32_t channel, const QString& path) {
    const QString problem = UseDroppedMedium(path, ShownChannel(channel));
    if (!problem.isEmpty()) {
        dialogs_.inform(form_, QStringLiteral("Channel %1").arg(channel), problem + u'.');
        return;
    }
    OnStageChanged(app_.project, app_.project.currentStage);
    Refresh();
}

void ChannelPanel::Watch(RenderRun& run) {
    previews_ = std::make_shared<PreviewMailbox>(*this);
    run.previewStage = app_.project.currentStage;
    run.showPreview = [mailbox = previews_](ChannelPreview preview) { mailbox->Put(std::move(preview)); };
}

bool ChannelPanel::event(QEvent* event) {
    if (event->type() != PreviewEvent()) return QObject::event(event);
    ShowPreviews();
    return true;
}

void ChannelPanel::ShowPreviews() {
    if (!previews_) return;
    for (ChannelPreview& preview : previews_->Take()) {
        // What was still under way when the run ended, or another stage was shown, comes too late.
        if (!preview.bitmap || !player_.currentRun || app_.run->showChannelBuffers == 0) continue;
        if (preview.stage != app_.project.currentStage) continue;
        const auto channel = uint32_t(preview.channel);
        if (ShownChannel(channel).kind == kChannelBuffer)
            groups_[channel].thumbnail->ShowPreview(std::move(preview.bitmap));
    }
}

}  // namespace pixelgrove
