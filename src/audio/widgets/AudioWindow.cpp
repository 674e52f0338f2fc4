#include "audio/widgets/AudioWindow.h"

#include <QWindow>
#include <algorithm>

#include "look/widgets/Theme.h"
#include "media/LiveFeeds.h"
#include "ui_SpectrumWindow.h"
#include "windows/widgets/DialogScaler.h"

namespace pixelgrove {

namespace {

constexpr int kPeriodMs = 22;
constexpr double kHomingSteps = 8192;
// So long after the last block, in periods, nothing plays: packets may come rarely at first.
constexpr int kQuietTicks = 45;

// No level in any column, and a waveform without a wave.
bool IsSilent(const AudioBlock& rows) {
    const auto wave = rows.begin() + kAudioColumns;
    return std::all_of(rows.begin(), wave, [](uint8_t level) { return level == 0; }) &&
           std::all_of(wave, rows.end(), [wave](uint8_t value) { return value == *wave; });
}

}  // namespace

AudioWindow::AudioWindow(AudioParameters& parameters)
    : parameters_(parameters), form_(std::make_unique<Ui::SpectrumWindow>()) {
    setAttribute(Qt::WA_DeleteOnClose);
    SetUpForm();
    ShowParameters();
    ConnectParameters();
    timer_.setInterval(kPeriodMs);
    connect(&timer_, &QTimer::timeout, this, &AudioWindow::ShowSound);
}

AudioWindow::~AudioWindow() = default;

void AudioWindow::SetUpForm() {
    Client()->setFont(FormFont());
    form_->setupUi(Client());
    FitToForm(*this);
    form_->sensitivitySlider->setFocus();
}

// A value that a slider doesn't reach stays what it is until the slider is moved.
void AudioWindow::ShowParameters() {
    form_->sensitivitySlider->setValue(parameters_.smoothingWeight);
    form_->homingSlider->setValue(int(parameters_.homingFactor * kHomingSteps));
    form_->noiseSlider->setValue(parameters_.noiseLevel);
    form_->maximizeBox->setChecked(parameters_.maximizeRange);
}

void AudioWindow::ConnectParameters() {
    connect(form_->sensitivitySlider, &QSlider::valueChanged, this,
            [this](int position) { parameters_.smoothingWeight = position; });
    connect(form_->homingSlider, &QSlider::valueChanged, this,
            [this](int position) { parameters_.homingFactor = position / kHomingSteps; });
    connect(form_->noiseSlider, &QSlider::valueChanged, this,
            [this](int position) { parameters_.noiseLevel = position; });
    connect(form_->maximizeBox, &QCheckBox::toggled, this,
            [this](bool isOn) { parameters_.maximizeRange = isOn; });
}

void AudioWindow::showEvent(QShowEvent* event) {
    FrameWindow::showEvent(event);
    FollowSight();
}

void AudioWindow::hideEvent(QHideEvent* event) {
    FrameWindow::hideEvent(event);
    FollowSight();
}

void AudioWindow::changeEvent(QEvent* event) {
    FrameWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) FollowSight();
}

void AudioWindow::FollowSight() {
    if (!isVisible() || isMinimized())
        timer_.stop();
    else if (!timer_.isActive())
        timer_.start();
}

void AudioWindow::ShowSound() {
    // On another desktop, say.
    if (!windowHandle() || !windowHandle()->isExposed()) return;
    const AudioBlock rows = LatestAudioBlock();
    form_->spectrumView->Show(rows);
    form_->stateLabel->setText(StateText(rows));
}

QString AudioWindow::StateText(const AudioBlock& rows) {
    const SoundReport report = LatestSoundReport();
    ticksWithout_ = report.blocks == blocks_ ? ticksWithout_ + 1 : 0;
    blocks_ = report.blocks;
    switch (report.state) {
        case SoundState::None:
            return QStringLiteral("No sound output was found when the program started.");
        case SoundState::Lost:
            return QStringLiteral("The sound output is gone. The next one is heard after a new start.");
        case SoundState::Listening:
            break;
    }
    const bool isQuiet = ticksWithout_ >= kQuietTicks || IsSilent(rows);
    return isQuiet ? QStringLiteral("Nothing is playing.") : QString();
}

}  // namespace pixelgrove
