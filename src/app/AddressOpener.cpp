#include "app/AddressOpener.h"

#include <QByteArray>
#include <QDesktopServices>
#include <QUrl>

namespace veltrano {

void openWithDesktop(const std::string& url) {
    const QUrl address = QUrl::fromEncoded(QByteArray::fromStdString(url), QUrl::StrictMode);
    if (address.isValid() && !address.scheme().isEmpty())
        QDesktopServices::openUrl(address);
}

} // namespace veltrano
