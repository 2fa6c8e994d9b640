#pragma once
// Runs one refresh of a repository as a job: the data and the status in either order,
// then the ahead/behind counts when references were read. A new request cancels the
// refresh in flight; the new one starts from `invalidatedSubdomains`, which only a
// finished step clears, so no wish is lost.
#include <QPointer>
#include <memory>

class Job;
class RepositoryController;

class RefreshRepositoryCommand {
 public:
  enum class UpdateOrder { statusFirst, dataFirst };

  static inline const char* jobName = "Refresh Repository";

  // On the main thread. Does nothing for a controller without a module.
  void execute(RepositoryController& repositoryController, UpdateOrder order);

  const std::shared_ptr<Job>& activeRefreshJob() const { return activeRefreshJob_; }

 private:
  friend class RepositoryController;
  struct Input;
  // The job's body, on the job's thread.
  static void run(const Input& in, const std::shared_ptr<Job>& job, const QPointer<RepositoryController>& guard);

  std::shared_ptr<Job> activeRefreshJob_;
};
