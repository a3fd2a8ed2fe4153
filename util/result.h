/// What a function that can fail returns: a value, or the reason why there is none.
///
/// The reason is a clause for a person, without a full stop: "cannot open /tmp/x: No such file or
/// directory". Whoever talks to the user makes it into a sentence.
#pragma once

#include <optional>
#include <string>
#include <utility>

namespace tvw {

/// A T or a reason. Reading the value of a failed result is undefined: test it first.
template <class T>
class [[nodiscard]] Result
{
public:
    /// Success. Not explicit, so that a function returns its value as it is.
    Result(T value) : value_(std::move(value)) {}

    [[nodiscard]] static Result failure(std::string reason)
    {
        return Result(std::nullopt, std::move(reason));
    }

    [[nodiscard]] explicit operator bool() const noexcept { return value_.has_value(); }
    [[nodiscard]] T& operator*() & noexcept { return *value_; }
    [[nodiscard]] const T& operator*() const& noexcept { return *value_; }
    [[nodiscard]] T&& operator*() && noexcept { return *std::move(value_); }
    [[nodiscard]] T* operator->() noexcept { return &*value_; }
    [[nodiscard]] const T* operator->() const noexcept { return &*value_; }
    /// Empty on success.
    [[nodiscard]] const std::string& reason() const noexcept { return reason_; }

private:
    Result(std::nullopt_t, std::string reason) : reason_(std::move(reason)) {}

    std::optional<T> value_;
    std::string reason_;
};

/// Success, which is the default, or a reason.
class [[nodiscard]] Status
{
public:
    Status() = default;

    [[nodiscard]] static Status failure(std::string reason)
    {
        Status status;
        status.failed_ = true;
        status.reason_ = std::move(reason);
        return status;
    }

    [[nodiscard]] explicit operator bool() const noexcept { return !failed_; }
    /// Empty on success.
    [[nodiscard]] const std::string& reason() const noexcept { return reason_; }

private:
    bool failed_ = false;
    std::string reason_;
};

} // namespace tvw
