#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace veltrano {

/// Opens an address with the program that the desktop has for it.
using OpenAddress = std::function<void(const std::string& url)>;

/// Opens a letter in the user's mail program, its subject and body given in UTF-8. The mail is always empty;
/// an empty Address leaves it to the user to whom the letter goes.
void sendEmailWithMail(const OpenAddress& openAddress, std::string_view mail, std::string_view Address,
                       std::string_view Subject, std::string_view Body);

/// Opens a letter to our support that asks for ideas.
void createEmailWithFeedBack(const OpenAddress& openAddress);

} // namespace veltrano
