/// The panel of one input: what it is bound to, and the way to bind it.
#pragma once

#include "app/input_advanced.h"
#include "app/input_binding.h"
#include "app/input_config_dialog.h"
#include "app/input_detection.h"

#include <memory>

namespace tvw::rgs::app {

/// Its components belong to the window, its two dialogs to itself.
class InputConfigDlg::PropertyManager final : public MessageNode
{
public:
    /// panel: built from the panel's layout and listed in the window. It is empty until `refresh`.
    PropertyManager(unidevice::Property& property, gui::Component& panel);

    void refresh();  ///< the binding, the devices or the numbers have changed
    void showLive(); ///< what the input says now
    void clear();
    void closeDialogs();
    [[nodiscard]] bool isDetecting() const { return detection_ && detection_->isOpen(); }
    [[nodiscard]] const unidevice::Property& property() const { return property_; }

    void receive(Message& message, bool isBroadcast) override;

private:
    /// The two combo boxes of a choice and the icon beside them.
    struct Row
    {
        int icon;
        int device;
        int control;
    };
    static constexpr Row kFirst{206, 207, 209};
    static constexpr Row kSecond{202, 203, 204};

    void handle(int id, std::uint32_t message);
    void press(int id);
    void show(const Row& row, const ControlChoice& choice);
    void deviceChosen(const Row& row);
    [[nodiscard]] unidevice::Control* chosen(const Row& row);
    void bindChosen();
    void bindDetected(unidevice::Control& control, bool positive);
    void detect();
    void openAdvanced();
    void showSecond(bool isOpen);
    void showDescription();

    template <class Kind>
    [[nodiscard]] Kind* as(int id) const
    {
        return gui::toKind<Kind>(panel_.findById(id));
    }

    unidevice::Property& property_;
    gui::Component& panel_;
    std::unique_ptr<InputDetection> detection_;
    std::unique_ptr<AdvancedInput> advanced_;
};

} // namespace tvw::rgs::app
