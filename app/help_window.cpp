#include "app/help_window.h"

#include "app/window_base.h"
#include "gui/qt/pixmap.h"

#include <QAction>
#include <QFileInfo>
#include <QImage>
#include <QTextBrowser>

namespace tvw::rgs::app {

/// Pictures are made to fit: those of whole windows are wider than a page.
class HelpWindow::Browser final : public QTextBrowser
{
public:
    Browser();

private:
    QVariant loadResource(int type, const QUrl& name) override;
};

HelpWindow::Browser::Browser()
{
    setObjectName("help");
    setWindowIcon(gui::loadIcon(productIcon()));
    setOpenExternalLinks(true); // of the net; pages of our own open here
    resize(820, 760);
    document()->setDocumentMargin(16.0);
    connect(this, &QTextBrowser::sourceChanged, this, [this](const QUrl& page) {
        setWindowTitle(QFileInfo(page.path()).completeBaseName() + " - Help");
    });
    const auto onKeys = [this](const QKeySequence& keys, void (QTextBrowser::*turn)()) {
        auto* const action = new QAction(this);
        action->setShortcut(keys);
        connect(action, &QAction::triggered, this, turn);
        addAction(action);
    };
    onKeys(QKeySequence::Back, &QTextBrowser::backward);
    onKeys(QKeySequence::Forward, &QTextBrowser::forward);
}

QVariant HelpWindow::Browser::loadResource(int type, const QUrl& name)
{
    QVariant found = QTextBrowser::loadResource(type, name);
    if (type != QTextDocument::ImageResource)
        return found;
    constexpr int kWidest = 740; // [pixels]
    const QImage picture = QImage::fromData(found.toByteArray());
    if (picture.width() > kWidest)
        return picture.scaledToWidth(kWidest, Qt::SmoothTransformation);
    return picture.isNull() ? found : QVariant(picture);
}

HelpWindow::HelpWindow() : browser_(std::make_unique<Browser>()) {}
HelpWindow::~HelpWindow() = default;

void HelpWindow::open(const std::string& page)
{
    browser_->setSource(QUrl::fromLocalFile(QString::fromStdString(page)));
    browser_->show();
    browser_->raise();
    browser_->activateWindow();
}

} // namespace tvw::rgs::app
