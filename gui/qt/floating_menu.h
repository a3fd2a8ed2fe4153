/// The fly-out of a button, whose content can be torn off into a window of its own.
#pragma once

#include <QDialog>
#include <QMenu>
#include <QPointer>
#include <QPushButton>

namespace tvw::gui {

class FloatingMenu;
class QBoxLayoutLimited;

/// The strip at the top of a fly-out that tears its content off.
class TearOffButton : public QPushButton
{
public:
    explicit TearOffButton(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// The window of a torn-off content; gives it back when it closes.
class TearedOffMenu : public QDialog
{
public:
    /// menu must outlive this.
    TearedOffMenu(FloatingMenu& menu, QWidget* window);

    void hold(QWidget& content);
    void giveBack();

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override { close(); }

private:
    FloatingMenu& menu_;
    QBoxLayoutLimited* layout_;
    QPointer<QWidget> content_;
};

class FloatingMenu : public QMenu
{
public:
    explicit FloatingMenu(QWidget* button);
    ~FloatingMenu() override;

    /// The widget stays its component's; null takes out the present one.
    void setContent(QWidget* content);
    [[nodiscard]] QWidget* content() const { return content_; }
    [[nodiscard]] TearedOffMenu* tornOff() const { return tornOff_; }

    void createMenuDialog(); ///< tears the content off
    void getBackWidget();    ///< a content that is not in the menu comes back

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QBoxLayoutLimited* layout_;
    QPointer<QWidget> content_;
    QPointer<TearedOffMenu> tornOff_;
};

/// Where a fly-out of that size goes for a button, all on the screen: under it, above it where the
/// screen ends, never at a negative place.
QPoint flyOutPlace(const QRect& button, const QSize& menu, const QRect& screen);

} // namespace tvw::gui
