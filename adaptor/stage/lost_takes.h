/// Takes whose program went away before they ended: found by their journals, brought back by
/// simulating them again on the scene as it was, with the input as it came.
#pragma once

#include "adaptor/stage/journal_format.h"
#include "adaptor/stage/session.h"
#include "util/result.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tvw::rgs::stage {

struct LostTake
{
    std::string journal;  ///< path; the copy of the scene stands beside it
    std::string snapshot; ///< path of that copy
    journalformat::TakeOrigin origin;
    std::size_t frames = 0;     ///< simulated ones that reached the disk
    double end = 0.0;           ///< time of the last of them [s]
    std::int64_t writtenAt = 0; ///< when the journal was last written, seconds since 1970
};

/// A take's journal as it can be read: the whole blocks from its begin.
struct JournalContent
{
    journalformat::TakeOrigin origin;
    std::vector<journalformat::ToolInputs> tools;
    std::size_t inputCount = 0; ///< of all tools
    std::vector<double> times;  ///< of the start and of each frame [s], rising
    std::vector<double> values; ///< inputCount for each time
};

/// The reason, with the path in it, when the file is no journal or its header is not whole. A
/// journal of a whole header but no frames has no times.
Result<JournalContent> readJournal(const std::string& path);

/// Those of the session's user folder whose programs are gone, by the time of their last frame,
/// oldest first. None in an isolated session.
std::vector<LostTake> findLostTakes();

/// Takes the place of the present scene: that of before the take, with the take up to its last
/// frame on the disk, bit for bit. The journal stays until it is discarded. The reason when a run
/// is on or the files can't be read; the present scene then stays.
Status recoverLostTake(Session& session, const LostTake& take, const Progress& progress = {});

/// Removes the journal and its copy of the scene.
Status discardLostTake(const LostTake& take);

} // namespace tvw::rgs::stage
