// ControlGenerator: the window that writes a line for a live control, so that nobody needs to know the form
// of its comment by heart. It stays open while lines are inserted. Main thread.
#pragma once

#include <functional>
#include <memory>

#include "controls/GeneratedLine.h"
#include "windows/widgets/Dialogs.h"

namespace Ui {
class ControlDialog;
}

namespace pixelgrove {

class ControlGenerator : public FrameDialog {
    Q_OBJECT

  public:
    // insert gets a line, without its end, as often as the user asks for it; never an empty one.
    ControlGenerator(QWidget* owner, std::function<void(const QString& line)> insert);
    ~ControlGenerator() override;

  private:
    GeneratorFields Fields() const;
    void ShowLine();
    void OnControlChosen();
    void OnDataChosen();
    void Insert() const;
    void Copy() const;

    const std::unique_ptr<Ui::ControlDialog> form_;
    const std::function<void(const QString& line)> insert_;
    QString line_;  // as shown; empty until the first one
};

}  // namespace pixelgrove
