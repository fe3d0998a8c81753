#include "device/OnlineTranscript.h"

#include "base/Errors.h"

#include <QDateTime>
#include <QDir>

#include <utility>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

QString Hex(std::span<const std::uint8_t> bytes) {
    const auto* data = reinterpret_cast<const char*>(bytes.data());
    return QString::fromLatin1(
        QByteArray::fromRawData(data, static_cast<qsizetype>(bytes.size())).toHex(' ').toUpper());
}

} // namespace

void OnlineTranscript::Begin(const QString& line) {
    file_ = std::make_unique<QTemporaryFile>(QDir::tempPath() + "/vorn-matrix-editor-online-XXXXXX"_L1);
    file_->open(); // Text() tells when it could not be
    awaiting_ = false;
    Write(line + u'\n');
}

void OnlineTranscript::Write(const QString& text) {
    if (file_ && file_->isOpen())
        file_->write(text.toUtf8());
}

void OnlineTranscript::BeginPass() {
    if (!std::exchange(awaiting_, false))
        Write(u"\n"_s);
    else
        Write(u"  not waited for\n\n"_s);
}

void OnlineTranscript::Sending(std::span<const std::uint8_t> packet) {
    if (std::exchange(awaiting_, true))
        Write(u"  not waited for\n"_s);
    sinceSending_.start();
    const QString now = QDateTime::currentDateTime().toString(u"yyyy-MM-dd HH:mm:ss.zzz"_s);
    const QString meaning = std::exchange(meaning_, QString()).trimmed();
    Write(now + u"  "_s + Hex(packet) + (meaning.isEmpty() ? QString() : u"  "_s + meaning));
}

void OnlineTranscript::Replied(std::span<const std::uint8_t> reply) {
    if (!std::exchange(awaiting_, false))
        return;
    const QString answer = reply.empty() ? u"no reply"_s : u"reply "_s + Hex(reply);
    Write(u"  %1 after %2 ms\n"_s.arg(answer).arg(sinceSending_.elapsed()));
}

std::vector<std::byte> OnlineTranscript::Text() {
    if (!file_ || !file_->flush() || file_->error() != QFileDevice::NoError || !file_->seek(0))
        throw FileError("The packets of the session could not be kept: " +
                        (file_ ? file_->errorString().toStdString() : std::string("there was none")));
    const QByteArray text = file_->readAll();
    file_->seek(file_->size());
    const auto* data = reinterpret_cast<const std::byte*>(text.constData());
    return {data, data + text.size()};
}

} // namespace vek
