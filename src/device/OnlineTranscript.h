// Every packet of an online session and what was answered, to be saved as a text.
#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QTemporaryFile>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace vek {

/// Kept in a temporary file: a day online has millions of packets.
class OnlineTranscript {
  public:
    /// Forgets the session before; the next one begins with this line.
    void Begin(const QString& line);
    /// The commands of a pass follow.
    void BeginPass();
    /// What the next packet means ("V,0,210 Volume Output = 1,0dB, CS3318 = 210/&HD2").
    void Explain(const QString& meaning) { meaning_ = meaning; }
    void Sending(std::span<const std::uint8_t> packet);
    /// Empty when none came in time.
    void Replied(std::span<const std::uint8_t> reply);

    /// There has been a session.
    bool Any() const { return file_ != nullptr; }
    /// UTF-8 with line feeds. Throws FileError when it could not be kept.
    std::vector<std::byte> Text();

  private:
    void Write(const QString& text);

    std::unique_ptr<QTemporaryFile> file_;
    QString meaning_;
    QElapsedTimer sinceSending_;
    bool awaiting_ = false; ///< the line of the last packet lacks its end
};

} // namespace vek
