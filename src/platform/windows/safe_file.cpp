#include "platform/system/safe_file.h"

#include "platform/windows/handle.h"
#include "platform/windows/windows_error.h"

// After windows.h, whose types they use.
#include <aclapi.h>
#include <sddl.h>

#include <QCoreApplication>
#include <QDir>
#include <memory>

namespace orvalis::safe_file {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

std::wstring Native(const QString& path) { return QDir::toNativeSeparators(path).toStdWString(); }

Handle Open(const QString& path, DWORD access) {
  return Handle(CreateFileW(Native(path).c_str(), access, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
}

struct LocalFreeMemory {
  void operator()(void* memory) const { LocalFree(memory); }
};

}  // namespace

Stamp StampOf(const QString& path) {
  const Handle file = Open(path, FILE_READ_ATTRIBUTES);
  BY_HANDLE_FILE_INFORMATION about{};
  if (!file || GetFileInformationByHandle(file.get(), &about) == 0) return {};
  const auto join = [](DWORD high, DWORD low) { return static_cast<std::uint64_t>(high) << 32 | low; };
  return {.identity = join(about.nFileIndexHigh, about.nFileIndexLow),
          .size = static_cast<std::int64_t>(join(about.nFileSizeHigh, about.nFileSizeLow)),
          .changed = static_cast<std::int64_t>(
              join(about.ftLastWriteTime.dwHighDateTime, about.ftLastWriteTime.dwLowDateTime))};
}

int LastError() { return static_cast<int>(GetLastError()); }

void ClearLastError() { SetLastError(ERROR_SUCCESS); }

std::string ErrorText(int error) { return SystemText(static_cast<DWORD>(error)); }

bool CanRead(const QString& file) { return static_cast<bool>(Open(file, GENERIC_READ)); }

bool CanWrite(const QString& folder) {
  // Permissions come from so many places that only trying shows.
  const QString probe = folder + "/orvalis-" + QString::number(QCoreApplication::applicationPid()) + ".probe";
  const Handle file(CreateFileW(Native(probe).c_str(), GENERIC_WRITE, kShareAll, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
  return static_cast<bool>(file);
}

bool RestrictToOwner(const QString& file) {
  // Nothing inherited; full access for the owner, the system and the administrators.
  PSECURITY_DESCRIPTOR made = nullptr;
  if (ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;FA;;;OW)(A;;FA;;;SY)(A;;FA;;;BA)", SDDL_REVISION_1,
                                                           &made, nullptr) == 0) {
    return false;
  }
  const std::unique_ptr<void, LocalFreeMemory> descriptor(made);
  return SetFileSecurityW(Native(file).c_str(), DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION,
                          made) != 0;
}

bool Replace(const QString& from, const QString& to) {
  return MoveFileExW(Native(from).c_str(), Native(to).c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

bool Flush(const QString& file) {
  const Handle handle = Open(file, GENERIC_WRITE);
  return handle && FlushFileBuffers(handle.get()) != 0;
}

// MoveFileExW already writes names through.
void FlushNames(const QString& /*folder*/) {}

}  // namespace orvalis::safe_file
