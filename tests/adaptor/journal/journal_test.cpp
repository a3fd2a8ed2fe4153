#include "tests/adaptor/journal/take_fixture.h"
#include "util/file.h"

#include <chrono>
#include <csignal>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tvw::rgs::stage {
namespace {

class LostTakeTest : public TakeTest
{
protected:
    /// A process of its own records, is slow once at 5 s so that what it has done goes to the disk,
    /// and is killed at 6 s.
    void loseTake() const
    {
        const pid_t child = ::fork();
        if (child == 0) {
            const auto session = start();
            (void)perform(*session, [](double time) {
                if (std::abs(time - 5.0) < 0.001)
                    std::this_thread::sleep_for(std::chrono::milliseconds(600));
                if (time > 6.0)
                    ::raise(SIGKILL);
            });
            ::_exit(0);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    }

    std::vector<double> expectedKeys(double end) const
    {
        const auto session = start(true);
        EXPECT_TRUE(perform(*session));
        return keys(*session, end);
    }
};

TEST_F(LostTakeTest, AKilledTakeComesBackBitForBit)
{
    loseTake();
    double end = 0.0;
    std::vector<double> found;
    {
        const auto session = start();
        const std::vector<LostTake> takes = session->lostTakes();
        ASSERT_EQ(takes.size(), 1U);
        const LostTake& take = takes.front();
        end = take.end;
        EXPECT_EQ(take.origin.start, 1.0);
        EXPECT_EQ(take.origin.framesPerSecond, 25.0);
        EXPECT_EQ(take.origin.scene, "");
        EXPECT_GE(end, 5.0);
        EXPECT_LE(end, 6.0);
        EXPECT_EQ(take.frames, static_cast<std::size_t>(std::lround((end - 1.0) * 25.0)));
        const Status recovered = session->recover(take);
        ASSERT_TRUE(recovered) << recovered.reason();
        found = keys(*session, 100.0);
        ASSERT_TRUE(discardLostTake(take));
        EXPECT_TRUE(session->lostTakes().empty());
        session->clear();
        EXPECT_EQ(journalFiles(), 0U);
    }
    EXPECT_GT(found.size(), 17U * 100);
    EXPECT_EQ(found, expectedKeys(end));
}

TEST_F(LostTakeTest, ATornJournalGivesTheTakeUpToTheTear)
{
    loseTake();
    const auto session = start();
    std::vector<LostTake> takes = session->lostTakes();
    ASSERT_EQ(takes.size(), 1U);
    const std::string bytes = *readFile(takes[0].journal);
    const std::size_t whole = takes[0].frames;

    const auto framesOf = [&](const std::string& content) {
        EXPECT_TRUE(writeFileAtomically(takes[0].journal, content));
        const Result<JournalContent> read = readJournal(takes[0].journal);
        return read && !read->times.empty() ? static_cast<long>(read->times.size()) - 1 : -1L;
    };
    EXPECT_EQ(framesOf(bytes + bytes.substr(8, 40)), static_cast<long>(whole))
        << "rubbish behind the end";
    std::string flipped = bytes;
    flipped.back() = static_cast<char>(flipped.back() ^ 1);
    EXPECT_LT(framesOf(flipped), static_cast<long>(whole)) << "a bit of the last block";
    long before = -1;
    for (std::size_t size = 0; size < bytes.size();
         size += 97) { // no length of it is read past its end
        const long frames = framesOf(bytes.substr(0, size));
        EXPECT_GE(frames, before) << size;
        before = frames;
    }
    EXPECT_LT(before, static_cast<long>(whole));
}

TEST_F(LostTakeTest, AFinishedTakeLeavesNothingBehindAndARunningOneIsNotLost)
{
    const auto session = start();
    std::size_t filesInRun = 0;
    std::size_t lostInRun = 99;
    ASSERT_TRUE(perform(*session, [&](double time) {
        if (std::abs(time - 2.0) > 0.001)
            return;
        filesInRun = journalFiles();
        lostInRun = session->lostTakes().size();
    }));
    EXPECT_EQ(filesInRun, 2U);
    EXPECT_EQ(lostInRun, 0U);
    EXPECT_EQ(journalFiles(), 0U);
    EXPECT_TRUE(session->messages().empty());
}

TEST_F(LostTakeTest, AnIsolatedSessionWritesNoJournal)
{
    const auto session = start(true);
    std::size_t files = 99;
    ASSERT_TRUE(perform(*session, [&](double) { files = journalFiles(); }));
    EXPECT_EQ(files, 0U);
}

TEST_F(LostTakeTest, ATakeWithoutAPlaceForItsJournalIsRecordedAllTheSame)
{
    ASSERT_TRUE(writeFileAtomically(folder_ + "/journal", "no folder"));
    const auto session = start();
    ASSERT_TRUE(perform(*session));
    EXPECT_EQ(keys(*session, 100.0).size(), 17U * 201);
    ASSERT_EQ(session->messages().size(), 1U);
    EXPECT_NE(session->messages()[0].text.find(folder_ + "/journal"), std::string::npos);
}

} // namespace
} // namespace tvw::rgs::stage
