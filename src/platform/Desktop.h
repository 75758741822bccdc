#pragma once

#include <string>
#include <vector>

namespace veltrano {

/// What the program asks of the desktop around it: its file manager, its browser, its mail program. Every
/// call returns at once, whatever the desktop does with it, and nothing is reported back; where the desktop
/// can't do it, nothing happens. Main thread. One lives as long as the program.
class Desktop {
public:
    virtual ~Desktop() = default;

    /// Shows the items in the file manager, each selected in its folder. Paths are bytes, absolute.
    virtual void showItems(const std::vector<std::string>& paths) = 0;

    /// Shows the file manager's window about the items. Paths are bytes, absolute.
    virtual void showItemProperties(const std::vector<std::string>& paths) = 0;

    /// Opens an address with the program that the desktop has for it: a web page, or a letter for "mailto:".
    virtual void openAddress(const std::string& url) = 0;
};

} // namespace veltrano
