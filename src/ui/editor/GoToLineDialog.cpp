#include "ui/editor/GoToLineDialog.h"

#include <QIntValidator>

#include "look/widgets/Theme.h"
#include "ui/editor/CodeView.h"
#include "ui_GoToLineDialog.h"
#include "windows/widgets/DialogScaler.h"
#include "windows/widgets/Dialogs.h"

namespace pixelgrove {

namespace {

constexpr int kMaxTypedLine = 999999999;

}  // namespace

void AskForLine(CodeView& editor) {
    auto* dialog = new FrameDialog(editor.window());
    Ui::GoToLineDialog form;
    QWidget& client = *dialog->Client();
    client.setFont(FormFont());
    form.setupUi(&client);
    dialog->setWindowTitle(client.windowTitle());
    const QSize base = client.size();
    dialog->SetMinimumClientSize(base / 2);
    dialog->ResizeClient(base);
    AttachScaling(client);
    form.lineLabel->setText(QStringLiteral("&Line (1 to %1):").arg(editor.blockCount()));
    form.lineEdit->setValidator(new QIntValidator(1, kMaxTypedLine, form.lineEdit));
    form.lineEdit->setText(QString::number(editor.CaretLine()));
    form.lineEdit->selectAll();
    form.lineEdit->setFocus();
    QObject::connect(form.okButton, &QAbstractButton::clicked, dialog,
                     [dialog, edit = form.lineEdit] { dialog->Done(edit->hasAcceptableInput()); });
    QObject::connect(form.cancelButton, &QAbstractButton::clicked, dialog, [dialog] { dialog->Done(false); });
    ExecOnce(dialog, [&editor, edit = form.lineEdit] { editor.GoToLine(edit->text().toInt()); });
}

}  // namespace pixelgrove
