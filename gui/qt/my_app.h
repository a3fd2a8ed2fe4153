/// Our own application object, for a program that has none.
#pragma once

#include <QApplication>

namespace tvw::gui {

class MyApp : public QApplication
{
public:
    using QApplication::QApplication;
};

} // namespace tvw::gui
