/// How a result crosses a virtual interface without fixing the caller's allocator.
#pragma once

namespace tvw {

/// Refers to an object of the caller. The callee gets a reference to this and assigns: the copy
/// then runs in the caller's own code. The order of the virtual functions is frozen.
///     std::string tag;
///     ReturnValue<std::string> out(tag);
///     factory.name(out);
template <class T>
class ReturnValue
{
public:
    /// target must live as long as this.
    explicit ReturnValue(T& target) : target_(&target) {}

    [[nodiscard]] virtual const T& get() const { return *target_; }
    [[nodiscard]] virtual T& get() { return *target_; }
    /// Copies value into the caller's object, unless it is that object, and answers that object.
    virtual T& assign(const T& value)
    {
        if (&value != target_) {
            *target_ = value;
        }
        return *target_;
    }

protected:
    ReturnValue(const ReturnValue&) = default;
    ReturnValue& operator=(const ReturnValue&) = delete;

public:
    virtual ~ReturnValue() = default;

private:
    T* target_;
};

} // namespace tvw
