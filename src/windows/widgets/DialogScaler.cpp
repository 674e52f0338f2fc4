#include "windows/widgets/DialogScaler.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QChildEvent>
#include <QComboBox>
#include <QFontInfo>
#include <QHash>
#include <QSet>
#include <algorithm>
#include <cmath>

#include "windows/widgets/FrameWindow.h"

namespace pixelgrove {

namespace {

constexpr int kMinStretch = 50;
constexpr int kNaturalStretch = 100;

// A stretch this near to the natural one would blur the letters for nothing.
constexpr int kLeastStretchDifference = 5;

constexpr int kMaxDepth = 2;

bool IsScalable(const QWidget& child) {
    return !child.isWindow() && !child.inherits("QWindowContainer");
}

bool KeepsFont(const QWidget& widget) {
    return qobject_cast<const QAbstractScrollArea*>(&widget) || widget.property(kKeepFont).toBool();
}

// A font that is set in full no longer follows that of the parent.
void PinFont(QWidget& widget) {
    QFont font = widget.font();
    font.setPixelSize(QFontInfo(font).pixelSize());
    font.setStretch(font.stretch() > 0 ? font.stretch() : kNaturalStretch);
    widget.setFont(font);
}

// Set on each part: an application-wide style sheet keeps fonts from going down by themselves.
void SetFontBelow(QWidget& parent, const QFont& font) {
    for (QObject* object : parent.children()) {
        auto* child = qobject_cast<QWidget*>(object);
        if (!child || child->isWindow() || KeepsFont(*child)) continue;
        child->setFont(font);
        SetFontBelow(*child, font);
    }
}

// The parts of a control that keep their fonts must not take the control's.
void PinFontsBelow(QWidget& parent) {
    for (QObject* object : parent.children()) {
        auto* child = qobject_cast<QWidget*>(object);
        if (!child || child->isWindow()) continue;
        if (KeepsFont(*child))
            PinFont(*child);
        else
            PinFontsBelow(*child);
    }
}

class FormScaler : public QObject {
  public:
    FormScaler(QWidget& form, bool mainWindow)
        : QObject(&form),
          form_(form),
          mainWindow_(mainWindow),
          base_(DialogBaseRect(form.size())),
          baseFont_(BaseFontSize(QFontInfo(form.font()).pixelSize())),
          scale_(ScaleAt(form.size(), base_)) {
        EnsureRecords(form_, 1, {1, 1});
        form.installEventFilter(this);
    }

    void Apply();
    void Pause() { ++pauses_; }
    void Resume() {
        if (--pauses_ == 0) Apply();
    }
    DialogScale Scale() const { return scale_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void EnsureRecords(QWidget& parent, int depth, DialogScale scale);
    void Place(QWidget& parent, int depth, const QFont& font);
    QFont ScaledFont() const;

    QWidget& form_;
    const bool mainWindow_;
    const EdgeRect base_;
    const FontSize baseFont_;
    DialogScale scale_;
    int pauses_ = 0;
    bool resizing_ = false;
    struct Base {
        EdgeRect rect;
        QSize icon;
    };
    QHash<const QObject*, Base> records_;  // a control at the base scale
    QSet<const QObject*> unplaced_;        // added, but not shown yet: their makers still place them
};

FormScaler* FindScaler(const QWidget& form) {
    for (QObject* object : form.children())
        if (auto* scaler = dynamic_cast<FormScaler*>(object)) return scaler;
    return nullptr;
}

bool IsChildForm(const QWidget& child) {
    return child.metaObject() == &QWidget::staticMetaObject && !child.layout() && !FindScaler(child);
}

void FormScaler::EnsureRecords(QWidget& parent, int depth, DialogScale scale) {
    for (QObject* object : parent.children()) {
        auto* child = qobject_cast<QWidget*>(object);
        if (!child || !IsScalable(*child) || unplaced_.contains(child)) continue;
        if (!records_.contains(child)) {
            const auto* button = qobject_cast<QAbstractButton*>(child);
            records_.insert(child, {ControlBaseRect(FromQRect(child->geometry()), scale),
                                    button ? button->iconSize() : QSize()});
            connect(child, &QObject::destroyed, this, [this](const QObject* gone) { records_.remove(gone); });
            child->setMinimumSize(0, 0);
            child->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
            if (!KeepsFont(*child)) PinFontsBelow(*child);
        }
        if (depth < kMaxDepth && IsChildForm(*child)) EnsureRecords(*child, depth + 1, scale);
    }
}

QFont FormScaler::ScaledFont() const {
    const FontSize size = ScaledFontSize(baseFont_, base_, scale_);
    QFont font = form_.font();
    font.setPixelSize(std::max(1, std::abs(size.height)));
    // A width of 0 is the natural one. Else the letters follow the scale's own proportion: the width in whole
    // pixels is too coarse, at small sizes the text's width would leap while the window is dragged.
    int stretch = kNaturalStretch;
    if (size.width != 0 && scale_.y > 0)
        stretch = std::clamp(RoundToInt(kNaturalStretch * double(scale_.x) / scale_.y), kMinStretch,
                             kNaturalStretch);
    if (kNaturalStretch - stretch < kLeastStretchDifference) stretch = kNaturalStretch;
    font.setStretch(stretch);
    return font;
}

void FormScaler::Place(QWidget& parent, int depth, const QFont& font) {
    // A copy: a control that is moved may answer by making or dropping another.
    const QObjectList children = parent.children();
    for (QObject* object : children) {
        const auto record = records_.constFind(object);
        if (record == records_.constEnd() || object->parent() != &parent) continue;
        auto& child = static_cast<QWidget&>(*object);
        const bool childForm = IsChildForm(child);
        // A closed combo box keeps its height: how long its list is, is set apart from it.
        child.setGeometry(ToQRect(ScaledControlRect(record->rect, scale_, false)));
        if (auto* button = qobject_cast<QAbstractButton*>(&child))
            button->setIconSize(record->icon * double(std::min(scale_.x, scale_.y)));
        if (auto* combo = qobject_cast<QComboBox*>(&child)) {
            combo->setMaxVisibleItems(std::max(kComboVisibleEntries, combo->maxVisibleItems()));
            combo->view()->setMinimumWidth(ComboListWidth(combo->width()));
        }
        if (!childForm && !KeepsFont(child) && !FindScaler(child)) {
            child.setFont(font);
            SetFontBelow(child, font);
        }
        if (depth < kMaxDepth && childForm) Place(child, depth + 1, font);
    }
}

void FormScaler::Apply() {
    if (pauses_ > 0 || resizing_) return;
    EnsureRecords(form_, 1, mainWindow_ ? DialogScale{1, 1} : scale_);
    if (!NeedsRescale(form_.size(), base_)) return;
    resizing_ = true;
    const bool updates = form_.updatesEnabled();
    if (updates) form_.setUpdatesEnabled(false);
    scale_ = ScaleAt(form_.size(), base_);
    Place(form_, 1, ScaledFont());
    if (updates) form_.setUpdatesEnabled(true);
    resizing_ = false;
}

bool FormScaler::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Resize:
            if (watched == &form_) Apply();
            break;
        case QEvent::ChildAdded: {
            QObject* child = static_cast<QChildEvent*>(event)->child();
            if (watched != &form_ || !child->isWidgetType()) break;
            unplaced_.insert(child);
            child->installEventFilter(this);
            break;
        }
        case QEvent::ChildRemoved: {
            QObject* child = static_cast<QChildEvent*>(event)->child();
            if (watched != &form_) break;
            child->removeEventFilter(this);
            unplaced_.remove(child);
            records_.remove(child);
            break;
        }
        case QEvent::Show:
        case QEvent::ShowToParent:
            if (watched == &form_) break;
            watched->removeEventFilter(this);
            unplaced_.remove(watched);
            Apply();
            break;
        default:
            break;
    }
    return false;
}

FormScaler* ScalerOf(const QPointer<QObject>& object) {
    return static_cast<FormScaler*>(object.data());
}

}  // namespace

void AttachScaling(QWidget& form, bool mainWindow) {
    if (!FindScaler(form)) new FormScaler(form, mainWindow);
}

void FitToForm(FrameWindow& window, int smallestPart) {
    QWidget& form = *window.Client();
    window.setWindowTitle(form.windowTitle());
    const QSize base = form.size();
    window.SetMinimumClientSize(base / smallestPart);
    window.ResizeClient(base);
    AttachScaling(form);
}

void Rescale(QWidget& form) {
    if (FormScaler* scaler = FindScaler(form)) scaler->Apply();
}

DialogScale ScaleOf(const QWidget& form) {
    const FormScaler* scaler = FindScaler(form);
    return scaler ? scaler->Scale() : DialogScale();
}

ScalingPause::ScalingPause(QWidget& form) : scaler_(FindScaler(form)) {
    if (scaler_) ScalerOf(scaler_)->Pause();
}

ScalingPause::~ScalingPause() {
    if (scaler_) ScalerOf(scaler_)->Resume();
}

}  // namespace pixelgrove
