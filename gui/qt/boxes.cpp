#include "gui/qt/boxes.h"

#include "gui/box.h"
#include "gui/qt/pixmap.h"

#include <QInputDialog>
#include <QMessageBox>

namespace tvw::gui {

namespace {

struct ButtonRow
{
    std::uint32_t flag;
    QMessageBox::StandardButton button;
};
constexpr ButtonRow kButtons[] = {
    {box::ok, QMessageBox::Ok},           {box::cancel, QMessageBox::Cancel},
    {box::close, QMessageBox::Close},     {box::help, QMessageBox::Help},
    {box::yes, QMessageBox::Yes},         {box::no, QMessageBox::No},
    {box::abort, QMessageBox::Abort},     {box::retry, QMessageBox::Retry},
    {box::ignore, QMessageBox::Ignore},   {box::yesToAll, QMessageBox::YesToAll},
    {box::noToAll, QMessageBox::NoToAll}, {box::apply, QMessageBox::Apply},
    {box::discard, QMessageBox::Discard}, {box::reset, QMessageBox::Reset},
    {box::save, QMessageBox::Save},
};

struct IconRow
{
    std::uint32_t flag;
    QMessageBox::Icon icon;
};
constexpr IconRow kIcons[] = {
    {box::critical, QMessageBox::Critical},
    {box::warning, QMessageBox::Warning},
    {box::information, QMessageBox::Information},
    {box::question, QMessageBox::Question},
};

bool silent = false;
std::string iconPath;

void setIcon(QWidget& window)
{
    const QIcon icon = loadIcon(iconPath);
    if (!icon.isNull())
        window.setWindowIcon(icon);
}

QMessageBox::StandardButtons buttonsOf(std::uint32_t flags)
{
    QMessageBox::StandardButtons buttons;
    for (const ButtonRow& row : kButtons) {
        if (flags & row.flag)
            buttons |= row.button;
    }
    return buttons ? buttons : QMessageBox::Ok;
}

QMessageBox::Icon iconOf(std::uint32_t flags)
{
    for (const IconRow& row : kIcons) {
        if (flags & row.flag)
            return row.icon;
    }
    return QMessageBox::NoIcon;
}

} // namespace

void setSilentMode(bool value)
{
    silent = value;
}

bool isSilentMode()
{
    return silent;
}

void setBoxIcon(const std::string& path)
{
    iconPath = path;
}

std::uint32_t messageBox(QWidget* parent, const std::string& text, const std::string& title,
                         std::uint32_t flags, bool force)
{
    if (silent && !force)
        return box::silentAnswer(flags);
    QMessageBox message(iconOf(flags), QString::fromStdString(title), QString::fromStdString(text),
                        buttonsOf(flags), parent);
    if (flags & box::no && !(flags & box::cancel))
        message.setEscapeButton(QMessageBox::No);
    setIcon(message);
    const int answer = message.exec();
    for (const ButtonRow& row : kButtons) {
        if (row.button == answer)
            return row.flag;
    }
    return box::silentAnswer(flags);
}

bool inputBox(QWidget* parent, const std::string& title, const std::string& prompt,
              const std::string& defaultText, std::string& out)
{
    QInputDialog dialog(parent, Qt::CustomizeWindowHint | Qt::WindowCloseButtonHint |
                                    Qt::WindowStaysOnTopHint | Qt::MSWindowsFixedSizeDialogHint);
    setIcon(dialog);
    dialog.setWindowTitle(QString::fromStdString(title));
    dialog.setLabelText(QString::fromStdString(prompt));
    dialog.setTextValue(QString::fromStdString(defaultText));
    if (dialog.exec() != QDialog::Accepted)
        return false;
    out = dialog.textValue().toStdString();
    return true;
}

} // namespace tvw::gui
