/// The seconds before a recording starts, over all other windows.
#pragma once

#include <QWidget>

namespace tvw::rgs::app {

class CountdownDialog final : public QWidget
{
public:
    CountdownDialog();

    /// seconds: left; fraction: of the present second that is left, 0 to 1.
    void show(int seconds, double fraction);

protected:
    void paintEvent(QPaintEvent*) override;

private:
    int seconds_ = 0;
    double fraction_ = 0.0;
};

} // namespace tvw::rgs::app
