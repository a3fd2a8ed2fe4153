#include "app/about.h"

#include "app/linked_libraries.h"
#include "app/window_base.h"
#include "core/version.h"
#include "gui/qt/pixmap.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tvw::rgs::app {

namespace {

/// A button box with Close, which ends the dialog.
QDialogButtonBox* closeBox(QDialog& dialog)
{
    auto* const box = new QDialogButtonBox(QDialogButtonBox::Close, &dialog);
    QObject::connect(box, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    box->button(QDialogButtonBox::Close)->setToolTip("Closes this window.");
    return box;
}

QIcon largeIcon()
{
    return gui::loadIcon(coreImages() + "/tarvo_ico_64.png");
}

void showLicence(QWidget& parent, const LinkedLibrary& library)
{
    auto* const dialog = new QDialog(&parent);
    dialog->setObjectName(QString::fromStdString(library.key + "_licence"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(QString::fromStdString(library.title));
    auto* const text = new QPlainTextEdit(QString::fromStdString(licenceText(library)), dialog);
    text->setReadOnly(true);
    text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* const layout = new QVBoxLayout(dialog);
    layout->addWidget(text);
    layout->addWidget(closeBox(*dialog));
    dialog->resize(720, 520);
    dialog->open();
}

} // namespace

class AboutRGS::Form final : public QDialog
{
public:
    Form();

private:
    QWidget* heading();
    QLayout* libraries();
};

AboutRGS::Form::Form()
{
    setObjectName("AboutRGS");
    setWindowTitle(QString("About ") + kProductName);
    setWindowIcon(largeIcon());
    auto* const layout = new QVBoxLayout(this);
    layout->setSpacing(14);
    layout->addWidget(heading());
    layout->addLayout(libraries());
    layout->addStretch();
    layout->addWidget(closeBox(*this));
    setMinimumWidth(420);
}

QWidget* AboutRGS::Form::heading()
{
    auto* const logo = new QLabel;
    logo->setObjectName("logo");
    logo->setPixmap(gui::loadPixmap(coreImages() + "/tarvo_ico_64.png", devicePixelRatioF()));
    auto* const summary = new QLabel(QString("<h2>%1 %2</h2>Perform animation live, keep the take, "
                                             "resimulate it.")
                                         .arg(kProductName, kVersion));
    summary->setObjectName("summary");
    summary->setWordWrap(true);
    summary->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* const copyRight =
        new QLabel("Copyright Tarvo Works. Rigstage stands on these libraries:");
    copyRight->setObjectName("copyRight");
    copyRight->setWordWrap(true);
    auto* const box = new QWidget;
    auto* const layout = new QGridLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setColumnStretch(1, 1);
    layout->setHorizontalSpacing(16);
    layout->setVerticalSpacing(14);
    layout->addWidget(logo, 0, 0);
    layout->addWidget(summary, 0, 1);
    layout->addWidget(copyRight, 1, 0, 1, 2);
    return box;
}

QLayout* AboutRGS::Form::libraries()
{
    auto* const layout = new QGridLayout;
    layout->setColumnStretch(0, 1);
    int row = 0;
    for (const LinkedLibrary& library : linkedLibraries()) {
        auto* const text = new QLabel(QString::fromStdString(library.title));
        text->setObjectName(QString::fromStdString(library.key + "_text"));
        auto* const button = new QPushButton("Licence...");
        button->setObjectName(QString::fromStdString(library.key + "_button"));
        button->setToolTip(QString::fromStdString("Shows the licence of " + library.title + "."));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this,
                [this, library] { showLicence(*this, library); });
        layout->addWidget(text, row, 0);
        layout->addWidget(button, row++, 1);
    }
    return layout;
}

AboutRGS::AboutRGS() = default;
AboutRGS::~AboutRGS() = default;

void AboutRGS::open()
{
    if (!form_)
        form_ = std::make_unique<Form>();
    form_->show();
    form_->raise();
    form_->activateWindow();
}

} // namespace tvw::rgs::app
