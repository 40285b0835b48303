#include "support/SmallStack.h"

#include <pthread.h>

#include <exception>
#include <system_error>

namespace test_support {
namespace {

struct Work {
  const std::function<void()>& run;
  std::exception_ptr error;
};

extern "C" void* runWork(void* argument) {
  auto* const work = static_cast<Work*>(argument);
  try {
    work->run();
  } catch (...) {
    work->error = std::current_exception();
  }
  return nullptr;
}

void check(int error) {
  if (error != 0) {
    throw std::system_error(error, std::generic_category(), "pthread");
  }
}

}  // namespace

void runWithSmallStack(const std::function<void()>& work) {
  pthread_attr_t attributes;
  check(pthread_attr_init(&attributes));
  check(pthread_attr_setstacksize(&attributes, kSmallStackBytes));
  Work shared{work, nullptr};
  pthread_t thread;
  check(pthread_create(&thread, &attributes, runWork, &shared));
  check(pthread_join(thread, nullptr));
  check(pthread_attr_destroy(&attributes));
  if (shared.error) {
    std::rethrow_exception(shared.error);
  }
}

}  // namespace test_support
