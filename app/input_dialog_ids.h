/// The ids of the input window's layout.
#pragma once

namespace tvw::rgs::app::input {

enum Id {
    window = 100,
    picture = 101,
    profiles = 102,
    load = 103,
    save = 104,
    importProfile = 105,
    exportProfile = 106,
    remove = 107,
    status = 108,
    close = 109,
    rename = 110,
    saveAs = 111,
    clearAll = 112,
    makeNew = 113,
    saveAsStart = 114,
    panels = 199,

    first = window,
    last = panels
};

} // namespace tvw::rgs::app::input
