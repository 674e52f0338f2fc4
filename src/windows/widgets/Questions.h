// The form behind the questions of Dialogs.h, for what asks with buttons of its own. Main thread.
#pragma once

#include <QList>
#include <QString>
#include <QStyle>

namespace pixelgrove {

struct QuestionButton {
    QString caption;  // with its mnemonic
    QString name;
};

// Which button was pressed; the last one is the default, and what Escape and closing mean.
int Ask(QWidget* owner, const QString& caption, const QString& text, const QList<QuestionButton>& buttons,
        QStyle::StandardPixmap picture = QStyle::SP_MessageBoxWarning);

}  // namespace pixelgrove
