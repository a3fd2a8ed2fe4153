/// A time line of what changes rarely: a record for each change, not for each frame.
#pragma once

#include "util/avar.h"

namespace tvw::rgs {

template <class T>
class ChangeLine final : public AVar_Latest<T>
{
public:
    using AVar_Latest<T>::AVar_Latest;

    /// As the base's, but a value that the line has there already lays no record.
    void set(double t, const T& value)
    {
        const auto records = this->records();
        const bool begun = !records.empty() && records.front().time <= t;
        if (!begun || !(this->get(t) == value))
            AVar_Latest<T>::set(t, value);
    }
};

} // namespace tvw::rgs
