#include "gui/qt/floating_menu.h"

#include "gui/qt/boxlayout.h"

#include <QCloseEvent>
#include <QPainter>
#include <QScreen>

#include <algorithm>

namespace tvw::gui {

TearOffButton::TearOffButton(QWidget* parent) : QPushButton(parent)
{
    setMaximumHeight(12);
    setFocusPolicy(Qt::NoFocus);
    setToolTip(tr("Tear off"));
}

void TearOffButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (underMouse())
        painter.fillRect(rect(), palette().color(QPalette::Midlight));
    painter.fillRect(rect().adjusted(4, 3, -4, -2),
                     QBrush(QColor(100, 100, 100), Qt::Dense6Pattern));
}

TearedOffMenu::TearedOffMenu(FloatingMenu& menu, QWidget* window)
    : QDialog(window), menu_(menu), layout_(new QBoxLayoutLimited(QBoxLayout::TopToBottom, this))
{
    setWindowFlags(windowFlags() | Qt::Tool | Qt::WindowStaysOnTopHint);
}

void TearedOffMenu::hold(QWidget& content)
{
    content_ = &content;
    layout_->addWidget(&content);
    content.show();
    if (width() == 0 || height() == 0) {
        setMinimumSize(1, 1);
        resize(50, 50);
    }
}

void TearedOffMenu::giveBack()
{
    if (!content_)
        return;
    layout_->removeWidget(content_);
    content_->setParent(&menu_);
    content_.clear();
}

void TearedOffMenu::closeEvent(QCloseEvent* event)
{
    giveBack();
    event->accept();
}

FloatingMenu::FloatingMenu(QWidget* button)
    : QMenu(button), layout_(new QBoxLayoutLimited(QBoxLayout::TopToBottom, this))
{
    auto* const tearOff = new TearOffButton(this);
    layout_->addWidget(tearOff);
    QObject::connect(tearOff, &QPushButton::clicked, this, [this] { createMenuDialog(); });
    QObject::connect(this, &QMenu::aboutToShow, this, [this] { getBackWidget(); });
}

FloatingMenu::~FloatingMenu()
{
    delete tornOff_.data();
}

void FloatingMenu::setContent(QWidget* content)
{
    if (content_ && content_ != content) {
        getBackWidget();
        layout_->removeWidget(content_);
        content_->setParent(nullptr);
        content_->hide();
    }
    content_ = content;
    if (content_)
        layout_->addWidget(content_);
}

void FloatingMenu::createMenuDialog()
{
    if (!content_)
        return;
    if (!tornOff_)
        tornOff_ = new TearedOffMenu(*this, parentWidget() ? parentWidget()->window() : nullptr);
    tornOff_->setWindowTitle(title());
    layout_->removeWidget(content_);
    tornOff_->hold(*content_);
    tornOff_->move(pos());
    tornOff_->show();
    hide();
}

void FloatingMenu::getBackWidget()
{
    if (!content_ || layout_->indexOf(content_) >= 0)
        return;
    if (tornOff_) {
        tornOff_->giveBack(); // also from a window that is still open: the content is never twice
        tornOff_->hide();
    }
    layout_->addWidget(content_);
    content_->show();
    layout_->activate();
}

void FloatingMenu::showEvent(QShowEvent* event)
{
    QMenu::showEvent(event);
    const QWidget* const button = parentWidget();
    if (button == nullptr || button->screen() == nullptr)
        return;
    move(flyOutPlace(QRect(button->mapToGlobal(QPoint()), button->size()), size(),
                     button->screen()->availableGeometry()));
}

void FloatingMenu::paintEvent(QPaintEvent* event)
{
    QMenu::paintEvent(event);
    QPainter painter(this); // an outline, which a menu without items has not in every style
    painter.setPen(palette().color(QPalette::Light));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

QPoint flyOutPlace(const QRect& button, const QSize& menu, const QRect& screen)
{
    int x = button.left(), y = button.top() + button.height();
    x = std::min(x, screen.left() + screen.width() - menu.width());
    if (y + menu.height() > screen.top() + screen.height())
        y = button.top() - menu.height();
    return {std::max(x, 0), std::max(y, 0)};
}

} // namespace tvw::gui
