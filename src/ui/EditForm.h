// The main window's form: what of it Designer doesn't say. Main thread.
#pragma once

#include <memory>

class QWidget;

namespace Ui {
class EditWindow;
}

namespace pixelgrove {

struct DisplayChoices;

// The form on the client area, with its fonts, icons and splitters.
std::unique_ptr<Ui::EditWindow> MakeEditForm(QWidget& client);

// Asks whether the system's OpenGL can play a project, and says so on the form.
void ProbeOutput(Ui::EditWindow& form, DisplayChoices& display);

}  // namespace pixelgrove
