/// Containers: what their attributes say about the layout of their children.
#pragma once

#include "gui/componentinterface/border.h"
#include "gui/componentinterface/group.h"
#include "gui/componentinterface/list.h"
#include "gui/stdcomponent.h"

namespace tvw::gui::component {

struct ContainerFields
{
    bool vertical = true;
    FrameStyle style = FrameStyle::None;
    HAlign halign = HAlign::None;
    VAlign valign = VAlign::None;
    Sides padding{};
    Sides margin{}; ///< kept and written; the layout does not know it
};

/// Reads and writes padding and margin.
void readSpacing(const util::xml::Element& element, ContainerFields& fields);
void writeSpacing(const ContainerFields& fields, util::xml::Element& element);

/// Interface: one that derives from Aligned.
template <class Interface>
class Container : public FieldComponent<Interface, ContainerFields>
{
public:
    void writeXml(util::xml::Element& element) const override
    {
        FieldComponent<Interface, ContainerFields>::writeXml(element);
        writeSpacing(fields_, element);
    }
    HAlign halign() const override { return fields_.halign; }
    VAlign valign() const override { return fields_.valign; }
    void setHalign(HAlign align) override
    {
        fields_.halign = align;
        applyLayout();
    }
    void setValign(VAlign align) override
    {
        fields_.valign = align;
        applyLayout();
    }
    void setPadding(Side side, int pixels) override
    {
        fields_.padding[static_cast<std::size_t>(side)] = pixels;
        applyLayout();
    }
    void setPadding(int top, int right, int bottom, int left) override
    {
        fields_.padding = {top, right, bottom, left};
        applyLayout();
    }
    int padding(Side side) const override
    {
        return fields_.padding[static_cast<std::size_t>(side)];
    }

    [[nodiscard]] const ContainerFields& layoutFields() const { return fields_; }

protected:
    using FieldComponent<Interface, ContainerFields>::fields_;

    Container(const KindInfo& kind, std::span<const Row<ContainerFields>> rows,
              const util::xml::Element& element, const ContainerFields& defaults = {})
        : FieldComponent<Interface, ContainerFields>(kind, rows, element, defaults)
    {
        readSpacing(element, fields_);
    }

    virtual void applyLayout() {} ///< alignment, padding, direction or frame have changed
};

/// Interface: one that derives from Framed.
template <class Interface>
class FramedContainer : public Container<Interface>
{
public:
    FrameStyle style() const override { return fields_.style; }
    void setStyle(FrameStyle style) override
    {
        fields_.style = style;
        this->applyLayout();
    }

protected:
    using Container<Interface>::Container;
    using Container<Interface>::fields_;
};

class List : public FramedContainer<componentinterface::List>
{
public:
    static constexpr KindInfo kKind{kTag};

    explicit List(const util::xml::Element& element);

    void writeXml(util::xml::Element& element) const override;
    void setDirection(bool vertical) override;
    bool direction() const override { return fields_.vertical; }
};

class Border : public FramedContainer<componentinterface::Border>
{
public:
    static constexpr KindInfo kKind{kTag};

    explicit Border(const util::xml::Element& element);

protected:
    bool showsChild(std::size_t index) const override { return index == 0; }
};

class Group : public Container<componentinterface::Group>
{
public:
    static constexpr KindInfo kKind{kTag};

    explicit Group(const util::xml::Element& element);

protected:
    bool showsChild(std::size_t index) const override { return index == 0; }
};

} // namespace tvw::gui::component
