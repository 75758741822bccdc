#include "app/AddressOpener.h"

#include <QDesktopServices>
#include <QObject>
#include <QUrl>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace veltrano {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Stands for the desktop's programs of the schemes that the tests open.
class RecordingPrograms final : public QObject {
    Q_OBJECT

public:
    RecordingPrograms() {
        for (const auto* scheme : {"file", "https", "mailto"})
            QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "open");
    }
    ~RecordingPrograms() override {
        for (const auto* scheme : {"file", "https", "mailto"})
            QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
    }

    Q_INVOKABLE void open(const QUrl& url) { opened.push_back(url.toEncoded().toStdString()); }

    std::vector<std::string> opened;
};

TEST(AddressOpener, handsAddressesToTheDesktopByteForByte) {
    RecordingPrograms programs;
    openWithDesktop("file:///srv/%FF%20b%23");
    openWithDesktop("https://quorvex.example/?a=b%20c");
    openWithDesktop("mailto:help@quorvex.example?subject=a%20b");
    EXPECT_THAT(programs.opened, ElementsAre("file:///srv/%FF%20b%23", "https://quorvex.example/?a=b%20c",
                                             "mailto:help@quorvex.example?subject=a%20b"));
}

TEST(AddressOpener, leavesAloneWhatIsNoAddress) {
    RecordingPrograms programs;
    openWithDesktop("");
    openWithDesktop("/home/mara");
    openWithDesktop("https://a b/");
    EXPECT_THAT(programs.opened, IsEmpty());
}

} // namespace
} // namespace veltrano

#include "AddressOpenerTest.moc"
