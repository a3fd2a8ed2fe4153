// What the windows cost: built, kept in step with a tool, opened. On the offscreen platform.
#include "adaptor/stage/session.h"
#include "app/config_window.h"
#include "app/main_dialog.h"
#include "bench/compare.h"
#include "core/instance.h"
#include "core/instance_reference.h"
#include "gui/qt/gui_start.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QTreeWidget>

#include <array>
#include <cstdlib>
#include <functional>
#include <memory>
#include <vector>

namespace {

using namespace tvw;
using namespace tvw::rgs;
using core::configadaptor::Node;
using core::configadaptor::NodeKind;

std::unique_ptr<stage::Session> openSession()
{
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    (void)gui::startGui();
    return *stage::Session::start({.isolated = true});
}

/// The car's configuration as one would write it by hand: groups of form layouts in a scroll area,
/// a tree, a list of profiles and the buttons.
class Form final : public QDialog
{
public:
    explicit Form(Node& items)
    {
        auto* const columns = new QHBoxLayout(this);
        auto* const tree = new QTreeWidget;
        tree->setFixedWidth(240);
        tree->setHeaderHidden(true);
        new QTreeWidgetItem(new QTreeWidgetItem(tree, {"Main Preferences"}), {"4WheelerExt_01"});
        tree->expandAll();
        columns->addWidget(tree);
        auto* const right = new QVBoxLayout;
        columns->addLayout(right);
        auto* const profiles = new QComboBox;
        profiles->addItems({"Factory Settings", "Start Profile"});
        right->addWidget(new QLabel("Profile:"));
        right->addWidget(profiles);
        for (const int count : {4, 4}) {
            auto* const row = new QHBoxLayout;
            right->addLayout(row);
            for (int i = 0; i < count; ++i)
                row->addWidget(new QPushButton("A profile"));
        }
        auto* const scroll = new QScrollArea;
        scroll->setWidgetResizable(true);
        auto* const panel = new QWidget;
        auto* const groups = new QVBoxLayout(panel);
        for (Node* const group : items.children())
            addGroup(*group, *groups);
        scroll->setWidget(panel);
        right->addWidget(scroll);
        right->addWidget(new QLabel);
        right->addWidget(new QPushButton("Close"));
        resize(940, 720);
    }

    std::vector<QDoubleSpinBox*> spinners;

private:
    void addGroup(Node& group, QVBoxLayout& groups)
    {
        auto* const box = new QGroupBox(QString::fromStdString(group.label()));
        auto* const form = new QFormLayout(box);
        groups.addWidget(box);
        form->addRow(new QLabel(QString::fromStdString(group.tooltip())));
        for (Node* const item : group.children()) {
            if (item->kind() == NodeKind::Group)
                addGroup(*item, groups);
            else
                addItem(*item, *form);
        }
    }

    void addItem(Node& item, QFormLayout& form)
    {
        const QString label = QString::fromStdString(item.label());
        switch (item.kind()) {
        case NodeKind::Spinner:
        case NodeKind::IntSpinner: {
            auto* const spinner = new QDoubleSpinBox;
            spinner->setDecimals(4);
            spinner->setRange(item.minimum(), item.maximum());
            spinner->setSingleStep(item.step());
            spinner->setValue(item.value());
            spinner->setToolTip(QString::fromStdString(item.tooltip()));
            form.addRow(label, spinner);
            spinners.push_back(spinner);
            connect(spinner, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
                    [&item](double value) { item.change(value); });
            break;
        }
        case NodeKind::CheckBox: {
            auto* const box = new QCheckBox;
            box->setChecked(item.value() != 0.0);
            form.addRow(label, box);
            connect(box, &QCheckBox::toggled, this, [&item](bool on) { item.change(on); });
            break;
        }
        case NodeKind::ComboBox: {
            auto* const box = new QComboBox;
            for (const std::string& choice : item.choices())
                box->addItem(QString::fromStdString(choice));
            box->setCurrentIndex(static_cast<int>(item.value()));
            form.addRow(label, box);
            break;
        }
        case NodeKind::Button:
            form.addRow(new QPushButton(label));
            break;
        default:
            break;
        }
    }
};

/// Spinners, check boxes, lists, buttons and groups of a window.
std::array<int, 5> census(const QWidget& window)
{
    return {window.findChildren<QDoubleSpinBox*>().size(), window.findChildren<QCheckBox*>().size(),
            window.findChildren<QComboBox*>().size(), window.findChildren<QPushButton*>().size(),
            window.findChildren<QGroupBox*>().size()};
}

/// From nothing to a painted window and down again.
void config_window_build_vs_qt(benchmark::State& state)
{
    const auto session = openSession();
    core::Instance& car = (*session->create("4WheelerExt"))->instance();
    std::array<int, 5> ourWidgets{}, theirWidgets{};
    const auto ours = [&] {
        app::ConfigWindow window;
        window.open(&car);
        QApplication::processEvents();
        ourWidgets = census(*window.root()->widget());
    };
    const auto peer = [&] {
        Form form(*car.configuration());
        form.show();
        QApplication::processEvents();
        theirWidgets = census(form);
    };
    ours();
    peer();
    if (ourWidgets != theirWidgets) {
        state.SkipWithError("the two windows hold other widgets");
        return;
    }
    bench::compare(state, peer, ours);
    state.counters["items"] = ourWidgets[0] + ourWidgets[1];
}
BENCHMARK(config_window_build_vs_qt)->Unit(benchmark::kMillisecond);

/// A tick in which all numbers of the car change; in one of the usual ones a few gauges do.
void config_window_refresh_vs_qt(benchmark::State& state)
{
    const auto session = openSession();
    core::Instance& car = (*session->create("4WheelerExt"))->instance();
    std::vector<Node*> numbers;
    const std::function<void(Node&)> collect = [&](Node& node) {
        if (node.kind() == NodeKind::Spinner || node.kind() == NodeKind::IntSpinner)
            numbers.push_back(&node);
        for (Node* const child : node.children())
            collect(*child);
    };
    collect(*car.configuration());
    app::ConfigWindow window;
    window.open(&car);
    Form form(*car.configuration());
    form.show();
    QApplication::processEvents();

    int tick = 0;
    const auto move = [&](Node& item) {
        const double middle = std::min(std::max(1.0, item.minimum()), item.maximum());
        item.setValue(middle + (tick % 2) * std::max(item.step(), 0.01));
    };
    const auto ours = [&] {
        ++tick;
        for (Node* const item : numbers)
            move(*item);
        car.configuration()->refresh();
    };
    const auto peer = [&] {
        ++tick;
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            move(*numbers[i]);
            const QSignalBlocker quiet(form.spinners[i]);
            form.spinners[i]->setValue(numbers[i]->value());
        }
    };
    bench::compare(state, peer, ours);
    state.counters["items"] = static_cast<double>(numbers.size());
}
BENCHMARK(config_window_refresh_vs_qt)->Unit(benchmark::kMillisecond);

/// The same when nothing has changed: what a window that stands open costs each tick at least.
void config_window_idle_refresh(benchmark::State& state)
{
    const auto session = openSession();
    core::Instance& car = (*session->create("4WheelerExt"))->instance();
    app::ConfigWindow window;
    window.open(&car);
    QApplication::processEvents();
    for ([[maybe_unused]] auto _ : state)
        car.configuration()->refresh();
}
BENCHMARK(config_window_idle_refresh)->Unit(benchmark::kMicrosecond);

/// From nothing to the painted main window with its fly-outs and menus, and down again.
void main_window_open(benchmark::State& state)
{
    const auto session = openSession();
    for ([[maybe_unused]] auto _ : state) {
        app::MainDlg window({});
        window.init();
        window.open();
        QApplication::processEvents();
    }
}
BENCHMARK(main_window_open)->Unit(benchmark::kMillisecond);

} // namespace
