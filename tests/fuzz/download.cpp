// Programming ends with a result, the port closed and the failures told that belong to the result, whatever
// the device does; when the user is asked for another device, all of the image was sent to this one.
#include "Conversation.h"

#include "link/OutcomeTexts.h"
#include "link/VekLink.h"

#include <map>

using namespace vek;
using namespace vek::test;

namespace {

/// Sees the blocks on the line, and what the window is told of them.
class Programming : public LinkOutcomes, public ProgrammingOutcomes {
  public:
    Programming(InputBytes& bytes, const DownloadImage& downloaded) : input(bytes), image(downloaded) {}

    int Failures = 0;

    void Sent(const ByteVector& bytes) {
        constexpr auto headLength = 2;
        if (bytes.size() <= headLength)
            return;
        Require(begun);
        std::copy(bytes.begin() + headLength, bytes.end() - 1,
                  memory.begin() + static_cast<int>(blockImageBytes) * (bytes[0] * 256 + bytes[1]));
    }

    void PortSearched(std::size_t, const PortFinding&) override { Require(false); }
    Task<> Failed(Failure failure) override {
        ++Failures;
        Require(!TextOf(failure).Title.empty());
        co_return;
    }
    void Progress(DownloadProgress progress) override {
        if (progress.Acknowledged == 0 && progress.Retries == 0)
            begun = false;
        else
            Require(begun &&
                    progress.Acknowledged + progress.Retries == told.Acknowledged + told.Retries + 1);
        told = progress;
        Require(progress.Blocks == BlockCount(image.Length) && TenthsOf(progress) <= fullProgress);
    }
    void DownloadBegins() override {
        Require(!begun);
        begun = true;
        memory.fill(0);
    }
    Task<bool> WantsAnother() override {
        Require(std::equal(memory.begin(), memory.begin() + image.Length, image.Buffer.begin()));
        co_return input.Next() % 2 != 0;
    }

  private:
    InputBytes& input;
    const DownloadImage& image;
    std::array<std::uint8_t, imageBufferSize> memory = {}; ///< of the device
    DownloadProgress told;
    bool begun = false;
};

DownloadImage ImageOfLength(int length) {
    DownloadImage image;
    for (std::size_t i = 0; i < image.Buffer.size(); ++i)
        image.Buffer[i] = static_cast<std::uint8_t>(i * 31 + i / 256 + 1);
    image.Length = length;
    return image;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::map<ConfigureResult, std::vector<int>> failuresOf = {
        {ConfigureResult::Done, {0}},          {ConfigureResult::PortNotOpen, {1}},
        {ConfigureResult::NotResponding, {1}}, {ConfigureResult::DownloadFailed, {1}},
        {ConfigureResult::RestartFailed, {2}}, {ConfigureResult::EndedEarly, {0, 1}}};
    const DeviceTypeList types = {{29, matrixVekReply, "Matrix Vek", ""}, {9, 19, "Relay 4 Vek", ""}};
    InputBytes input(data, size);
    const std::size_t row = input.Next() % portCount;
    const int high = input.Next();
    const DownloadImage image =
        ImageOfLength((high * 256 + input.Next()) % static_cast<int>(imageBufferSize + 1));
    FuzzedPort port(input);
    Programming programming(input, image);
    RunningTask running;
    VekLink link(port, port, types, programming);
    bool mayEndEarly = false;
    bool cancelled = false;
    port.OnSent = [&](const ByteVector& sent) {
        Require(IsLinkPacket(port.Rate, sent));
        programming.Sent(sent);
    };
    port.OnUser = [&](int kind, int) {
        if (kind == 0) {
            mayEndEarly = true;
            link.EndEarly();
        } else {
            cancelled = true;
            running.Cancel();
        }
    };
    const auto result = port.Run(running, link.ProgramVek(row, image, programming));
    Require(!port.PortOpen() && result.has_value() != cancelled);
    if (result) {
        Require(mayEndEarly || *result != ConfigureResult::EndedEarly);
        Require(std::ranges::count(failuresOf.at(*result), programming.Failures) == 1);
    }
    return 0;
}
