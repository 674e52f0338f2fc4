// Scalable forms: a form whose controls stand at fixed places scales them and their fonts with its own size.
//
// A form is a widget without a layout whose direct children are its controls, at the places and sizes that
// they have at the form's base size (flat: a group's frame lies behind its controls, not around them).
// Controls may lay out what is inside them. A control that is a plain QWidget without a layout is a child
// form: its children scale with the outer form, unless it has a scaling of its own.
//
// Left alone: windows of their own, and containers of foreign windows. Scaled in place, but with their own
// fonts: scroll areas (text edits, trees, lists, tables), and widgets with the dynamic property kKeepFont.
// Explicit size limits of controls are lifted, as they would hinder the scaling. Main thread.
#pragma once

#include <QPointer>
#include <QWidget>

#include "windows/DialogScaling.h"

namespace pixelgrove {

class FrameWindow;

// A widget whose dynamic property of this name is true keeps its own font.
inline constexpr char kKeepFont[] = "keepFont";

// From now on the form's size at this call is its base size: every later size scales controls and fonts, by
// the font that the form has now. Children that are added later join with the place that they have when they
// are first shown. Once per form; ends with the form.
// mainWindow: places of children that are added later are taken as base places, not divided by the scale.
void AttachScaling(QWidget& form, bool mainWindow = false);

// Fits a window that isn't shown yet to the form that was set up on its client area, and attaches scaling:
// the form's title and size are the window's, which can be made smaller down to a part of that size.
void FitToForm(FrameWindow& window, int smallestPart = 2);

// Applies the form's present size; nothing for a widget without AttachScaling.
void Rescale(QWidget& form);

// The scale that controls have now: the one that was applied last, before that the one of the present size.
// 1 by 1 for a widget without AttachScaling.
DialogScale ScaleOf(const QWidget& form);

// Suspends scaling for a form while it lives, as while its controls are being exchanged. Nests; when the last
// one ends, the form's size then is applied.
class ScalingPause {
  public:
    explicit ScalingPause(QWidget& form);
    ~ScalingPause();
    ScalingPause(const ScalingPause&) = delete;
    ScalingPause& operator=(const ScalingPause&) = delete;

  private:
    QPointer<QObject> scaler_;  // null for a widget without AttachScaling
};

}  // namespace pixelgrove
