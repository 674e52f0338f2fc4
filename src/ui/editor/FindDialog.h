// FindDialog: the window in which the user says what to find, and with what to replace it. Says what is asked
// for and does nothing by itself. It stays open beside its owner until it is closed, and is deleted then.
// Main thread.
#pragma once

#include "ui/text/TextSearch.h"
#include "windows/widgets/FrameWindow.h"

class QAbstractButton;
class QLineEdit;

namespace pixelgrove {

struct FindTexts {
    QString what, with;
};

enum class FindAction { FindNext, Replace, ReplaceAll };

class FindDialog : public FrameWindow {
    Q_OBJECT

  public:
    // With a field and buttons to replace with, or with a direction. The texts are what its fields hold at
    // first; it searches downwards, wraps around, and any case and place counts. Enter is "Find Next".
    FindDialog(bool replace, const FindTexts& texts, QWidget* owner);

    FindRequest Request() const;
    // Into the texts that it has a field for.
    void StoreTexts(FindTexts& texts) const;

  Q_SIGNALS:
    // Typed into, by whatever means.
    void TextsChanged();
    // Never without a text to find.
    void Asked(pixelgrove::FindAction action);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    // The form's controls; null for what it lacks.
    struct Fields {
        QLineEdit* what;
        QAbstractButton *wholeWord, *matchCase, *wrapAround, *findNext, *cancel;
        QLineEdit* with = nullptr;
        QAbstractButton *replace = nullptr, *replaceAll = nullptr;
        QAbstractButton *up = nullptr, *down = nullptr;
    };

    static Fields SetUpForm(QWidget& client, bool replace);
    void Connect();

    const Fields fields_;
};

}  // namespace pixelgrove
