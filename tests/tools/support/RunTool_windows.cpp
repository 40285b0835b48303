#include "support/RunTool.h"

#include <windows.h>

#include <cwchar>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "fl/i18n.h"
#include "support/Skip.h"
#include "support/TemporaryFolder.h"

namespace test_support {
namespace {

namespace fs = std::filesystem;

std::wstring wide(std::string_view text) {
  const std::u16string units = fl::i18n::utf8_to_ustring(text);
  return {units.begin(), units.end()};
}

[[noreturn]] void fail(const char* what) {
  throw std::system_error(static_cast<int>(::GetLastError()), std::system_category(), what);
}

/// A handle that children inherit.
class Handle {
 public:
  Handle(const std::string& path, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    handle_ = ::CreateFileW(wide(path).c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE,
                            &inherited, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle_ == INVALID_HANDLE_VALUE) {
      fail(path.c_str());
    }
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() { close(); }

  HANDLE get() const { return handle_; }

  void close() {
    if (handle_ != nullptr) {
      ::CloseHandle(handle_);
      handle_ = nullptr;
    }
  }

 private:
  HANDLE handle_ = nullptr;
};

// Quotes an argument as the system takes a command line apart.
void appendArgument(const std::wstring& argument, std::wstring& line) {
  line += line.empty() ? L"\"" : L" \"";
  std::size_t backslashes = 0;
  for (const wchar_t unit : argument) {
    if (unit == L'"') {
      line.append(backslashes + 1, L'\\');
    }
    backslashes = unit == L'\\' ? backslashes + 1 : 0;
    line += unit;
  }
  line.append(backslashes, L'\\') += L'"';
}

// The environment of this process with other variables added.
std::wstring environmentWith(const std::vector<std::string>& variables) {
  std::wstring block(1, L'\0');
  for (const std::string& variable : variables) {
    block.append(wide(variable)) += L'\0';
  }
  wchar_t* const own = ::GetEnvironmentStringsW();
  for (const wchar_t* variable = own; *variable != L'\0'; variable += std::wcslen(variable) + 1) {
    const std::wstring text(variable);
    const std::wstring name = L'\0' + text.substr(0, text.find(L'=', 1) + 1);
    // The first one of a name counts.
    if (block.find(name) == std::wstring::npos) {
      block.append(text) += L'\0';
    }
  }
  ::FreeEnvironmentStringsW(own);
  return block.substr(1) + L'\0';
}

int runToEnd(std::wstring line, const std::string& folder, const std::wstring& environment,
             STARTUPINFOW& startup) {
  PROCESS_INFORMATION process{};
  if (::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_UNICODE_ENVIRONMENT,
                       const_cast<wchar_t*>(environment.c_str()),
                       fs::absolute(fs::u8path(folder)).c_str(), &startup, &process) == 0) {
    fail("the command");
  }
  ::WaitForSingleObject(process.hProcess, INFINITE);
  DWORD exitCode = 0;
  ::GetExitCodeProcess(process.hProcess, &exitCode);
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
  return static_cast<int>(exitCode);
}

}  // namespace

ToolRun runTool(const std::vector<std::string>& arguments, const ToolSurroundings& around) {
  if (around.isOnTerminal || around.isOutClosedPipe || !around.isAdministrator || around.memory ||
      around.fileSize) {
    skip("Windows has other terminals, pipes, rights and limits");
  }
  if (fs::is_directory(fs::u8path(around.inFile))) {
    skip("Windows opens no folder");
  }
  const TemporaryFolder folder;
  folder.writeFile("out", "");
  const std::string out = around.outFile.value_or(folder.nativePath("out"));
  const std::string err = folder.nativePath("err");
  std::wstring line;
  appendArgument(fs::absolute(fs::u8path(UPDATE_METADATA_TOOL)).native(), line);
  for (const std::string& argument : arguments) {
    if (fl::i18n::to_string(fl::i18n::utf8_to_ustring(argument)) != argument) {
      skip("arguments are UTF-16 on Windows");
    }
    appendArgument(wide(argument), line);
  }

  const bool hasNoInput = around.inFile == "/dev/null";
  Handle input(hasNoInput ? "NUL" : around.inFile, GENERIC_READ, OPEN_EXISTING);
  Handle output(out, GENERIC_WRITE, OPEN_EXISTING);
  Handle errors(err, GENERIC_WRITE, CREATE_ALWAYS);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = around.isInClosed ? nullptr : input.get();
  startup.hStdOutput = output.get();
  startup.hStdError = errors.get();
  const int exitCode = runToEnd(line, around.folder, environmentWith(around.environment), startup);
  input.close();
  output.close();
  errors.close();
  return {exitCode, readBytes(folder.nativePath("out")), readBytes(err)};
}

}  // namespace test_support
