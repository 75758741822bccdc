#pragma once

#include <string>

namespace veltrano {

/// Opens an encoded address, such as "file:///home/a%20b" or "mailto:…", with the program that the desktop
/// has for it, and returns at once. What is no address is left alone. Main thread, with an application.
void openWithDesktop(const std::string& url);

} // namespace veltrano
