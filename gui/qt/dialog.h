#pragma once

#include "gui/component/dialog.h"
#include "gui/qt/qtcomponent.h"

#include <QByteArray>
#include <QDialog>

namespace tvw::gui::component::qt {

class Dialog : public QtContainer<QtComponent<QDialog, component::Dialog>>
{
public:
    explicit Dialog(const util::xml::Element& element);

    void hide() override;
    int exec() override;
    void close(int code) override;
    void showModal() override;
    void endModal() override;
    void processEvents() override;
    bool isMaximized() const override { return QDialog::isMaximized(); }
    bool isMinimized() const override { return QDialog::isMinimized(); }
    void activate() override;

protected:
    bool event(QEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void done(int code) override; ///< the user's closing comes here too
    void build() override;
    void applyVisible(bool value) override;
    void applyLabel() override;
    void applyWindowFlags() override;

private:
    [[nodiscard]] Qt::WindowFlags wantedFlags() const;
    void restoreOrSize();
    void orderTabStops();
    void rememberGeometry();

    QByteArray geometry_; ///< empty until it has been hidden once
    bool waits_ = false;  ///< exec is running
    int heldUndoKey_ = 0; ///< Ctrl+Z or Ctrl+Y that went down here; 0: none
    bool closed_ = false; ///< while exec is running: it has been closed
};

} // namespace tvw::gui::component::qt
