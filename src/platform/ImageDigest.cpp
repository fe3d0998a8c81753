#include "platform/ImageDigest.h"

#include <QCryptographicHash>

namespace vek {

std::string ImageDigest(const DownloadImage& image) {
    const auto bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(image.Buffer.data()), image.Length);
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex().toStdString();
}

} // namespace vek
