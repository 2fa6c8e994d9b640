#include "Git/Process/TailReader.h"

#include <QFile>
#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Git/Process/StreamLineReader.h"
#include "Jobs/CancelationToken.h"
#include "Logging/AdvancedLogger.h"

TailReader::~TailReader() { wait(); }

void TailReader::wait() {
  if (operationQueue_.joinable()) operationQueue_.join();
}

void TailReader::tail(std::shared_ptr<CancelationToken> cancel, std::function<void(const QString&)> callback) {
  wait();
  operationQueue_ = std::thread([path = url_, cancel = std::move(cancel), callback = std::move(callback)] {
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
      LOG_ERROR(QStringLiteral("Cannot open '%1' for reading").arg(path));
      return;
    }
    // The reader owns a duplicate so that this loop can still stat and seek the file.
    auto reader = StreamLineReader::create(::dup(fd), QStringLiteral("\n"), TextEncoding::utf8, 4096);
    off_t offset = 0;
    while (!cancel->isCanceled()) {
      struct stat st {};
      if (::fstat(fd, &st) == 0 && st.st_size != offset && reader) {
        ::lseek(reader->fileDescriptor(), offset, SEEK_SET);
        while (auto line = reader->nextLine()) callback(*line);
        offset = ::lseek(reader->fileDescriptor(), 0, SEEK_CUR);
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    ::close(fd);
  });
}
