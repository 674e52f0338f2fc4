// ControlWidget: what the user moves to set one live control: a range for numbers, a list for options.
//
// Holds a copy of the control's state; the record knows nothing of it until Save. Its parts stand where a
// letter template puts them, so it fills any size that it is given. Main thread; owned by its parent.
#pragma once

#include <QWidget>

#include "core/ControlSet.h"

namespace pixelgrove {

class ControlWidget : public QWidget {
    Q_OBJECT

  public:
    // The widget for the record's kind, with the record's state; Randomize starts raised. Its parent places
    // it.
    static ControlWidget* Make(const UniformControl& record, QWidget* parent);

    // Its state into the record's range or combo, whichever it is for.
    virtual void Save(UniformControl& record) const = 0;
    // The record's state into it.
    virtual void Load(const UniformControl& record) = 0;
    // The live copy of a numeric control's state; null for a list.
    virtual const RangeControlState* Range() const { return nullptr; }

  Q_SIGNALS:
    // The user changed the state.
    void Changed();

  protected:
    explicit ControlWidget(QWidget* parent);
};

}  // namespace pixelgrove
