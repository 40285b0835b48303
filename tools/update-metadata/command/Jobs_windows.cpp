#include "command/Jobs.h"

namespace update_metadata_tool::command {

// The system cannot copy a process.
void runJobs(const Jobs& jobs, std::size_t /*processes*/, std::ostream& out, std::ostream& err,
             terminal::ProgressLine& progress) {
  for (std::size_t index = 0; index != jobs.count; ++index) {
    progress.begin(jobs.describe(index));
    jobs.done(index, jobs.work(index, out, err, progress));
  }
}

}  // namespace update_metadata_tool::command
