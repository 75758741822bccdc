#include "app/Mail.h"

#include "app/Vendor.h"

#include <QUrl>
#include <QUrlQuery>

#include <gtest/gtest.h>

#include <cctype>

namespace veltrano {
namespace {

std::string letterTo(std::string_view address, std::string_view subject, std::string_view body) {
    std::string opened;
    sendEmailWithMail([&](const std::string& url) { opened = url; }, {}, address, subject, body);
    return opened;
}

std::string feedbackLetter() {
    std::string opened;
    createEmailWithFeedBack([&](const std::string& url) { opened = url; });
    return opened;
}

/// What a mail program reads under a name.
QString fieldOf(const std::string& url, const char* name) {
    return QUrlQuery(QUrl(QString::fromStdString(url)))
        .queryItemValue(QLatin1String(name), QUrl::FullyDecoded);
}

TEST(Mail, aLetterIsOneAddressWithSubjectAndBody) {
    EXPECT_EQ(letterTo("help@quorvex.example", "Veltrano", "Hello"),
              "mailto:help@quorvex.example?SUBJECT=Veltrano&BODY=Hello");
}

TEST(Mail, anEmptyLetterKeepsItsForm) {
    EXPECT_EQ(letterTo("", "", ""), "mailto:?SUBJECT=&BODY=");
}

TEST(Mail, textIsEscapedInUtf8) {
    EXPECT_EQ(letterTo("", "a b", "1\n2 ä’"), "mailto:?SUBJECT=a%20b&BODY=1%0A2%20%C3%A4%E2%80%99");
}

TEST(Mail, nothingInATextEndsOrDividesIt) {
    const std::string text = "a&b=c?d#e%f+g;h\"i<j>/k:l@m";
    const std::string url = letterTo("", text, text);
    EXPECT_EQ(fieldOf(url, "SUBJECT").toStdString(), text);
    EXPECT_EQ(fieldOf(url, "BODY").toStdString(), text);
}

TEST(Mail, anAddressKeepsItsSignAndEscapesWhatWouldEndIt) {
    EXPECT_EQ(letterTo("a b?c&d@quorvex.example", "", ""),
              "mailto:a%20b%3Fc%26d@quorvex.example?SUBJECT=&BODY=");
}

TEST(Mail, aLetterIsPlainLetters) {
    std::string every;
    for (int byte = 1; byte < 256; ++byte)
        every.push_back(static_cast<char>(byte));
    for (const char character : letterTo(every, every, every))
        EXPECT_TRUE(std::isgraph(static_cast<unsigned char>(character)));
}

TEST(Mail, feedbackGoesToOurSupport) {
    EXPECT_TRUE(feedbackLetter().starts_with("mailto:" + std::string(vendor::kSupportAddress) + "?SUBJECT="));
}

TEST(Mail, feedbackHasItsTexts) {
    EXPECT_EQ(fieldOf(feedbackLetter(), "SUBJECT"), QStringLiteral("Veltrano. Feedback."));
    EXPECT_EQ(fieldOf(feedbackLetter(), "BODY"),
              QStringLiteral(
                  "Thank you! Here, in Quorvex, we create beautiful and intuitive products, that help our "
                  "customers to make complicated things simpler.\n If you suggest any idea how our apps "
                  "could be improved, all our customers\u2019 community and whole Quorvex team would "
                  "appreciate it.\n\nBest Regards,\nQuorvex Team"));
}

} // namespace
} // namespace veltrano
