#include "support/Depth.h"

#include <pthread.h>

#include <cstdlib>
#include <exception>
#include <system_error>

#include "support/Sanitizers.h"

namespace test_support {
namespace {

// The number in an environment variable, or `otherwise` if it is not set.
std::size_t numberFromEnvironment(const char* name, std::size_t otherwise) {
  const char* const text = std::getenv(name);
  return text != nullptr ? std::stoul(text) : otherwise;
}

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

std::size_t levels() {
  return numberFromEnvironment("UMP_DEPTH_LEVELS", kHasSanitizer ? 100000 : 1000000);
}

void runWithSmallStack(const std::function<void()>& work) {
  pthread_attr_t attributes;
  check(pthread_attr_init(&attributes));
  check(
      pthread_attr_setstacksize(&attributes, numberFromEnvironment("UMP_DEPTH_STACK", 256 * 1024)));
  Work shared{work, nullptr};
  pthread_t thread;
  check(pthread_create(&thread, &attributes, runWork, &shared));
  check(pthread_join(thread, nullptr));
  check(pthread_attr_destroy(&attributes));
  if (shared.error) {
    std::rethrow_exception(shared.error);
  }
}

std::string repeated(std::string_view text, std::size_t times) {
  std::string result;
  result.reserve(text.size() * times);
  for (; times != 0; --times) {
    result += text;
  }
  return result;
}

}  // namespace test_support
