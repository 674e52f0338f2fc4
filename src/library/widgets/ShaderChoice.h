// ShaderChoice: the list from which the user opens one of the shaders of a text. Typing filters it; all of
// them can be put into the library from here. Main thread.
#pragma once

#include <QTimer>
#include <memory>
#include <optional>

#include "library/ShaderImport.h"
#include "windows/widgets/Dialogs.h"

class QSortFilterProxyModel;
class QStandardItemModel;

namespace Ui {
class ShaderChoice;
}

namespace pixelgrove {

class ShaderChoice : public FrameDialog {
    Q_OBJECT

  public:
    // The shaders outlive the dialog.
    ShaderChoice(QWidget* owner, const FoundShaders& found);
    ~ShaderChoice() override;

    // The place of the selected one; nothing where the filter left none.
    std::optional<size_t> Selected() const;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void SetUpList();
    void Filter(const QString& text);
    void Import();

    const FoundShaders& found_;
    const std::unique_ptr<Ui::ShaderChoice> form_;
    QStandardItemModel* const rows_;
    QSortFilterProxyModel* const shown_;
    std::optional<ShaderImport> import_;
    QTimer importing_;  // while it runs
};

// Asks; nothing when the dialog was closed without a choice.
std::optional<size_t> ChooseShader(QWidget* owner, const FoundShaders& found);

}  // namespace pixelgrove
