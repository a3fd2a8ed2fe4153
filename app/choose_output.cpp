#include "app/choose_output.h"

#include <QFileDialog>

namespace tvw::rgs::app {

QString chooseOutput(QWidget* parent, const QString& title, const QString& start,
                     const QString& filter, const QString& ending)
{
    QFileDialog dialog(parent, title, {}, filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(ending);
    if (!start.isEmpty())
        dialog.selectFile(start);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

} // namespace tvw::rgs::app
