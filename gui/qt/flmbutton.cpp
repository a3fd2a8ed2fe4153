#include "gui/qt/flmbutton.h"

#include "gui/qt/color.h"
#include "gui/qt/floating_menu.h"

#include <QPainter>
#include <QProxyStyle>

namespace tvw::gui::component::qt {

namespace {

/// The application's style with another delay of the fly-out.
class DelayStyle : public QProxyStyle
{
public:
    DelayStyle(int delay, QObject* parent) : delay_(delay) { setParent(parent); }

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* answer) const override
    {
        return hint == SH_ToolButton_PopupDelay
                   ? delay_
                   : QProxyStyle::styleHint(hint, option, widget, answer);
    }

private:
    int delay_; ///< [ms]
};

} // namespace

FlmButton::FlmButton(const util::xml::Element& element)
    : QtComponent(element), menu_(new FloatingMenu(this))
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    setMenu(menu_);
    if (fields_.delay >= 0)
        QWidget::setStyle(new DelayStyle(fields_.delay, this));
    FlmButton::applyLabel();
    QObject::connect(this, &QToolButton::pressed, this, [this] { notify(message::buttonPressed); });
    QObject::connect(this, &QToolButton::released, this,
                     [this] { notify(message::buttonReleased); });
    QObject::connect(this, &QToolButton::clicked, this, [this] { notify(message::buttonClicked); });
}

void FlmButton::applyLabel()
{
    setText(QString::fromStdString(label()));
    menu_->setTitle(text());
}

void FlmButton::hideMenu()
{
    menu_->hide();
}

void FlmButton::setImage(int index, const std::string& path)
{
    component::FlmButton::setImage(index, path);
    if (isShown())
        loadImages();
}

void FlmButton::clearImages()
{
    component::FlmButton::clearImages();
    images_.clear();
    repaint();
}

void FlmButton::setFocusMarkerColor(Color color)
{
    component::FlmButton::setFocusMarkerColor(color);
    repaint();
}

void FlmButton::loadImages()
{
    images_.load(*this, fields_.images, devicePixelRatioF());
    if (hasImages()) {
        setMinSize(images_.size());
        setMaxSize(images_.size());
    }
    repaint();
}

void FlmButton::childWidgetAdded(Component* child)
{
    if (child == component::FlmButton::childAt(0))
        menu_->setContent(child->widget());
}

void FlmButton::childWidgetRemoved(Component* child)
{
    if (child->widget() != nullptr && child->widget() == menu_->content())
        menu_->setContent(nullptr);
}

void FlmButton::unbuild()
{
    menu_->hide();
    menu_->getBackWidget();
}

void FlmButton::paintContent(QPaintEvent* event)
{
    if (!hasImages())
        QToolButton::paintEvent(event);
    QPainter painter(this);
    if (hasImages())
        painter.drawPixmap(0, 0, images_.of(*this));
    const QPoint corner(width(), height());
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawPolygon(
        QPolygon({corner + QPoint(-3, -3), corner + QPoint(-3, -5), corner + QPoint(-5, -3)}));
    if (hasFocus()) {
        painter.setPen(toQColor(fields_.focusMarker));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

} // namespace tvw::gui::component::qt
