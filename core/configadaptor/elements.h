/// The kinds of configuration item. Variables are the tool's own and outlive the node.
#pragma once

#include "core/configadaptor/node.h"
#include "core/contract/interface.h"

namespace tvw::rgs::core::configadaptor::element {

class Root final : public Node
{
public:
    Root();
    void writeProfile(util::xml::Element& out) override;
    void readProfile(const util::xml::Element& profile) override; ///< converts an older format first
    util::xml::Element buildLayout() override;
};

class Group final : public Node
{
public:
    Group(std::string label, std::string tooltip);
    void writeProfile(util::xml::Element& out) override;
    void readProfile(const util::xml::Element& profile) override;
    util::xml::Element buildLayout() override;
};

/// Bounds of a number and the mouse travel per step [pixels].
struct SpinnerBounds
{
    double minimum, maximum, step;
    std::int32_t triggerLength;
};

class Spinner final : public Node
{
public:
    Spinner(std::uint32_t id, std::string label, std::string tooltip, double* variable,
            const SpinnerBounds& bounds, CInterfaceCallback* callback);
    void refresh() override;
    void writeProfile(util::xml::Element& out) override;
    void readProfile(const util::xml::Element& profile) override;
    double value() override { return *variable_; }
    void setValue(double value) override; ///< within the bounds
    util::xml::Element buildLayout() override;
    void change(double value) override;
    double minimum() override { return bounds_.minimum; }
    double maximum() override { return bounds_.maximum; }
    double step() override { return bounds_.step; }

private:
    double* variable_;
    SpinnerBounds bounds_;
};

class Spinner_Int final : public Node
{
public:
    Spinner_Int(std::uint32_t id, std::string label, std::string tooltip, std::int32_t* variable,
                const SpinnerBounds& bounds, CInterfaceCallback* callback);
    void refresh() override;
    void writeProfile(util::xml::Element& out) override;
    void readProfile(const util::xml::Element& profile) override;
    double value() override { return *variable_; }
    void setValue(double value) override; ///< within the bounds, truncated
    util::xml::Element buildLayout() override;
    void change(double value) override;
    double minimum() override { return bounds_.minimum; }
    double maximum() override { return bounds_.maximum; }
    double step() override { return bounds_.step; }

private:
    std::int32_t* variable_;
    SpinnerBounds bounds_;
};

class CheckBox final : public Node
{
public:
    CheckBox(std::uint32_t id, std::string label, std::string tooltip, bool* variable,
             CInterfaceCallback* callback);
    void refresh() override;
    void writeProfile(util::xml::Element& out) override;
    void readProfile(const util::xml::Element& profile) override;
    double value() override { return *variable_ ? 1.0 : 0.0; }
    void setValue(double value) override { *variable_ = value != 0.0; }
    util::xml::Element buildLayout() override;
    void change(double value) override;

private:
    bool* variable_;
};

class TextBox final : public Node
{
public:
    TextBox(std::uint32_t id, std::string label, std::string tooltip, std::string* variable,
            CInterfaceCallback* callback);
    void refresh() override;
    void writeProfile(util::xml::Element& out) override;
    void readProfile(const util::xml::Element& profile) override;
    util::xml::Element buildLayout() override;
    void changeText(const std::string& text) override;
    std::string text() override { return *variable_; }

private:
    std::string* variable_;
};

/// The variable is the index of the entry chosen; a profile holds the entry's text.
class ComboBox final : public Node, public CInterface::ComboUpdater
{
public:
    ComboBox(std::uint32_t id, std::string label, std::string tooltip, std::vector<std::string> items,
             std::int32_t* index, CInterfaceCallback* callback);
    void update(const std::vector<std::string>& items) override;
    void refresh() override;
    void writeProfile(util::xml::Element& out) override;
    void readProfile(const util::xml::Element& profile) override;
    double value() override { return *index_; }
    void setValue(double value) override;
    util::xml::Element buildLayout() override;
    void change(double value) override;
    void changeText(const std::string& text) override; ///< an entry's text; another: no change
    std::string text() override;
    std::vector<std::string> choices() override { return items_; }

private:
    std::vector<std::string> items_;
    std::int32_t* index_;
};

class Button final : public Node
{
public:
    Button(std::uint32_t id, std::string label, std::string tooltip, CInterfaceCallback* callback);
    util::xml::Element buildLayout() override;
    void press() override;
};

class Label final : public Node
{
public:
    Label(std::uint32_t id, std::string text, std::int32_t style);
    util::xml::Element buildLayout() override;

private:
    std::int32_t style_;
};

} // namespace tvw::rgs::core::configadaptor::element
