// Saves that are killed at any moment. VEK_KILLS sets how many must hit (200 by default).
#include "base/Bytes.h"
#include "base/DurableFile.h"
#include "support/TestData.h"

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <sys/mman.h>
#include <sys/wait.h>

using namespace vek;
using namespace vek::test;

namespace {

/// What the child tells, also when it is dead.
struct Shared {
    std::atomic<bool> Saving;
    std::atomic<int> Saves;
};

[[noreturn]] void SaveForever(const std::string& path, const std::string (&texts)[2], Shared& shared) {
    for (int i = 0;; ++i) {
        shared.Saving = true;
        WriteFileDurably(path, AsBytes(texts[i % 2]), ExistingTail::Drop);
        shared.Saving = false;
        ++shared.Saves;
        ::usleep(100);
    }
}

} // namespace

TEST(KilledSaves, LeaveTheOldFileOrTheNewOne) {
    const char* wanted = std::getenv("VEK_KILLS");
    const int kills = wanted != nullptr ? std::atoi(wanted) : 200;
    ASSERT_GT(kills, 0);
    const TemporaryFolder folder;
    const std::string path = folder.Path("a.VMC");
    const std::string texts[] = {std::string(6238, 'a'), std::string(100'000, 'b')};
    WriteText(path, texts[0]);
    auto* shared =
        new (::mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))
            Shared();
    std::mt19937 random(1);
    int hits = 0;
    int misses = 0;
    while (hits < kills) {
        shared->Saving = false;
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0)
            SaveForever(path, texts, *shared);
        ::usleep(static_cast<useconds_t>(1000 + random() % 4000));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        (shared->Saving ? hits : misses) += 1;
        const std::string left = ReadText(path);
        ASSERT_TRUE(left == texts[0] || left == texts[1]) << left.size() << " bytes after kill " << hits;
        if (hits % 100 == 0) // they would be removed after a minute
            for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
                if (entry.path() != path)
                    std::filesystem::remove(entry.path());
    }
    std::printf("%d kills during a save, %d between saves, %d saves whole\n", hits, misses,
                shared->Saves.load());
    EXPECT_GT(shared->Saves, 0);
}
