#include "platform/windows/com/client_object.h"

#include "base/run_time_error.h"
#include "platform/windows/windows_error.h"

namespace orvalis {
namespace {

/// The numbers that the language's runtime raises reach a client as errors of this facility, and a script as the
/// numbers themselves.
constexpr HRESULT RunTimeResult(int number) { return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number); }

/// Leaves the text and the source where the client's side of the call looks for them.
HRESULT Raise(HRESULT number, const std::string& text, const IID& interface_id) {
  ICreateErrorInfo* creator = nullptr;
  if (FAILED(CreateErrorInfo(&creator))) return number;
  creator->SetGUID(interface_id);
  const BSTR description = ToBstr(text);
  const BSTR source = ToBstr(kErrorSource);
  creator->SetDescription(description);
  creator->SetSource(source);
  SysFreeString(description);
  SysFreeString(source);
  IErrorInfo* info = nullptr;
  if (SUCCEEDED(creator->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(&info)))) {
    SetErrorInfo(0, info);
    info->Release();
  }
  creator->Release();
  return number;
}

}  // namespace

BSTR ToBstr(std::string_view text) {
  const std::wstring wide = Wide(text);
  return SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}

HRESULT ResultOf(const std::exception_ptr& error, const IID& interface_id) {
  try {
    std::rethrow_exception(error);
  } catch (const AutomationError& raised) {
    return Raise(raised.number(), raised.what(), interface_id);
  } catch (const RunTimeError& raised) {
    return Raise(RunTimeResult(raised.number()), raised.what(), interface_id);
  } catch (const std::exception& raised) {
    return Raise(E_FAIL, raised.what(), interface_id);
  }
}

}  // namespace orvalis
