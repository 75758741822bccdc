#include "app/Mail.h"

#include "app/Vendor.h"

namespace veltrano {

namespace {

/// Every byte but letters, digits and those in `kept` as a percent sign and two digits, so that nothing in
/// the text ends or divides the address.
std::string percentEscaped(std::string_view text, std::string_view kept) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string escaped;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        const bool isPlain = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                             (byte >= 'a' && byte <= 'z') || kept.find(character) != std::string_view::npos;
        if (isPlain) {
            escaped.push_back(character);
            continue;
        }
        escaped.push_back('%');
        escaped.push_back(kDigits[byte >> 4]);
        escaped.push_back(kDigits[byte & 15]);
    }
    return escaped;
}

constexpr std::string_view kUnreserved = "-._~";
constexpr std::string_view kInAddress = "-._~@";

constexpr std::string_view kFeedbackSubject = "Veltrano. Feedback.";
constexpr std::string_view kFeedbackBody =
    "Thank you! Here, in Quorvex, we create beautiful and intuitive products, that help our customers to "
    "make "
    "complicated things simpler.\n If you suggest any idea how our apps could be improved, all our "
    "customers’ "
    "community and whole Quorvex team would appreciate it.\n\nBest Regards,\nQuorvex Team";

} // namespace

void sendEmailWithMail(const OpenAddress& openAddress, std::string_view, std::string_view Address,
                       std::string_view Subject, std::string_view Body) {
    openAddress("mailto:" + percentEscaped(Address, kInAddress) + "?SUBJECT=" +
                percentEscaped(Subject, kUnreserved) + "&BODY=" + percentEscaped(Body, kUnreserved));
}

void createEmailWithFeedBack(const OpenAddress& openAddress) {
    sendEmailWithMail(openAddress, {}, vendor::kSupportAddress, kFeedbackSubject, kFeedbackBody);
}

} // namespace veltrano
