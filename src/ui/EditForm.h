// The main window's form: what of it Designer doesn't say. Main thread.
#pragma once

#include <memory>

class QWidget;

namespace Ui {
class EditWindow;
}

namespace pixelgrove {

// The form on the client area, with its fonts, icons and splitters.
std::unique_ptr<Ui::EditWindow> MakeEditForm(QWidget& client);

// Says on the form which OpenGL was found, and whether it can play a project.
void ShowProbe(const Ui::EditWindow& form, bool openGlOk);

}  // namespace pixelgrove
