#include "app/preferences.h"

#include "app/window_base.h"
#include "core/adaptor.h"
#include "core/core_implementation.h"
#include "core/windows.h"
#include "gui/qt/boxes.h"
#include "gui/qt/pixmap.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <utility>

namespace tvw::rgs::app {

using core::CoreImplementation;
using core::Settings;

namespace {

struct BoxRow
{
    const char* group;
    const char* name;
    const char* label;
    const char* tooltip;
    bool Settings::*setting;
};

constexpr const char* kGeneral = "generalgroup";
constexpr const char* kHost = "maxgroup";
constexpr const char* kHostId = "adaptor_3dsmax"; ///< begins the ids of that host's adaptors

constexpr BoxRow kBoxes[] = {
    {kGeneral, "silentMode", "Silent mode (suppress error messages)",
     "Messages go to the log, and questions get their usual answer.", &Settings::silentMode},
    {kGeneral, "alwaysOnTop", "Always on top (Requires restart)",
     "Keeps the windows above those of other programs.", &Settings::alwaysOnTop},
    {kGeneral, "checkUpdate", "Automatically check for updates at startup",
     "Asks the version server, if one is set up, when the main window first opens.",
     &Settings::checkForUpdates},
    {kHost, "dynamicMesh", "Use Dynamic meshes",
     "Takes a mesh anew at each time, so that tools feel a surface that changes its shape.",
     &Settings::dynamicMeshes},
    {kHost, "optimizedController", "Use optimized transform controller",
     "New nodes get a controller that holds the keys of takes faster than the host's own.",
     &Settings::optimizedTransform},
};

constexpr int kLongestCountdown = 9; // [s]

} // namespace

class PreferencesWindow::RGSPreferences final : public QDialog
{
public:
    explicit RGSPreferences(const std::function<void()>& convert);

    void open();
    void accept() override;
    void reject() override;

private:
    QGroupBox* group(const char* name, const char* title);
    void addBoxes(QGroupBox& group);
    void addCountdown(QGroupBox& group);
    void addConversion(QGroupBox& group);
    void addButtons();
    void showSettings();
    void convertControllers();

    const std::function<void()>& convert_;
    Settings saved_, working_;
};

PreferencesWindow::RGSPreferences::RGSPreferences(const std::function<void()>& convert)
    : QDialog(nullptr, Qt::Dialog | Qt::WindowStaysOnTopHint), convert_(convert)
{
    setObjectName("RGSPreferences");
    setWindowTitle("Preferences");
    setWindowIcon(gui::loadIcon(productIcon()));
    new QVBoxLayout(this);
    addBoxes(*group(kGeneral, "General"));
    addCountdown(*group("recordinggroup", "Recording"));
    QGroupBox& host = *group(kHost, "3ds Max Settings");
    addBoxes(host);
    addConversion(host);
    static_cast<QVBoxLayout*>(layout())->addStretch();
    addButtons();
    setMinimumWidth(380);
}

QGroupBox* PreferencesWindow::RGSPreferences::group(const char* name, const char* title)
{
    auto* const made = new QGroupBox(title, this);
    made->setObjectName(name);
    new QVBoxLayout(made);
    layout()->addWidget(made);
    return made;
}

void PreferencesWindow::RGSPreferences::addBoxes(QGroupBox& group)
{
    for (const BoxRow& row : kBoxes) {
        if (group.objectName() != row.group)
            continue;
        auto* const box = new QCheckBox(row.label, &group);
        box->setObjectName(row.name);
        box->setToolTip(row.tooltip);
        group.layout()->addWidget(box);
        connect(box, &QCheckBox::toggled, this,
                [this, setting = row.setting](bool on) { working_.*setting = on; });
    }
}

void PreferencesWindow::RGSPreferences::addCountdown(QGroupBox& group)
{
    auto* const box = new QSpinBox(&group);
    box->setObjectName("countdownTime");
    box->setRange(0, kLongestCountdown);
    box->setSuffix(" s");
    box->setToolTip("Seconds from a press of Record to the first frame.");
    auto* const form = new QFormLayout;
    form->addRow("Start Countdown time", box);
    static_cast<QVBoxLayout*>(group.layout())->addLayout(form);
    connect(box, qOverload<int>(&QSpinBox::valueChanged), this,
            [this](int seconds) { working_.startCountdown = seconds; });
}

void PreferencesWindow::RGSPreferences::addConversion(QGroupBox& group)
{
    auto* const button =
        new QPushButton("Convert all controllers to default PRS controllers", &group);
    button->setObjectName("convertController");
    button->setToolTip("Makes the scene independent of this program; can be undone.");
    button->setAutoDefault(false);
    group.layout()->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this] { convertControllers(); });
}

void PreferencesWindow::RGSPreferences::addButtons()
{
    auto* const buttons =
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->setObjectName("okCancel");
    buttons->button(QDialogButtonBox::Ok)->setToolTip("Keeps and saves the settings.");
    buttons->button(QDialogButtonBox::Cancel)->setToolTip("Leaves the settings as they were.");
    layout()->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { accept(); });
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
}

void PreferencesWindow::RGSPreferences::open()
{
    if (!isVisible()) {
        saved_ = working_ = CoreImplementation::instance().getSettings();
        showSettings();
    }
    findChild<QWidget*>(kHost)->setVisible(core::adaptor()->getAdaptorId().starts_with(kHostId));
    findChild<QWidget*>("convertController")->setEnabled(static_cast<bool>(convert_));
    show();
    raise();
    activateWindow();
}

void PreferencesWindow::RGSPreferences::showSettings()
{
    const Settings shown = working_; // each widget writes its own field as it changes
    for (const BoxRow& row : kBoxes)
        findChild<QCheckBox*>(row.name)->setChecked(shown.*row.setting);
    findChild<QSpinBox*>("countdownTime")->setValue(shown.startCountdown);
}

void PreferencesWindow::RGSPreferences::accept()
{
    core::SettingsStore& store = CoreImplementation::instance().settings();
    // What other windows have changed since this one opened stays.
    working_.updateViewport = store.get().updateViewport;
    const Status stored = store.set(working_);
    saved_ = working_;
    gui::setSilentMode(working_.silentMode);
    hide();
    if (!stored)
        CoreImplementation::instance().messageBox(
            nullptr,
            "The settings hold until the program ends, but could not be saved: " + stored.reason() +
                ".",
            "Preferences", core::box::ok | core::box::warning, true);
}

void PreferencesWindow::RGSPreferences::reject()
{
    working_ = saved_;
    hide();
}

void PreferencesWindow::RGSPreferences::convertControllers()
{
    if (!convert_)
        return;
    core::adaptor()->beginUndo("Convert all controllers to default PRS controller");
    convert_();
    core::adaptor()->endUndo();
}

PreferencesWindow::PreferencesWindow() : form_(std::make_unique<RGSPreferences>(convert_)) {}
PreferencesWindow::~PreferencesWindow() = default;

void PreferencesWindow::open()
{
    form_->open();
}

void PreferencesWindow::setControllerConversion(std::function<void()> convert)
{
    convert_ = std::move(convert);
}

} // namespace tvw::rgs::app
