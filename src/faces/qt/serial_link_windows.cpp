// The parts of Debian's Qt that this is built with have no serial ports for Windows.

// The others rely on the first.
// clang-format off
#include <windows.h>
#include <devguid.h>
#include <setupapi.h>
// clang-format on

#include <array>
#include <utility>

#include "base/fault.h"
#include "base/system.h"
#include "faces/qt/queued_serial_link.h"
#include "faces/qt/serial_link.h"

namespace fathomline {
namespace {

// "COM10" and above are found in the space of devices alone.
std::filesystem::path DevicePath(const std::string& device) {
  return PathOf(device.starts_with('\\') ? device : "\\\\.\\" + device);
}

std::error_code LastError() {
  return {static_cast<int>(::GetLastError()), std::system_category()};
}

HANDLE OpenHandle(const std::string& device) {
  constexpr DWORD kSharedByNobody = 0;
  return ::CreateFileW(DevicePath(device).c_str(), GENERIC_READ | GENERIC_WRITE, kSharedByNobody,
                       nullptr, OPEN_EXISTING, 0, nullptr);
}

BYTE ParityOf(char letter) {
  switch (letter) {
    case 'e':
      return EVENPARITY;
    case 'o':
      return ODDPARITY;
    case 'm':
      return MARKPARITY;
    case 's':
      return SPACEPARITY;
    default:
      return NOPARITY;
  }
}

// Never waits: what has arrived is in the buffer of the driver, whence each poll takes it.
class WindowsSerialLink : public QueuedSerialLink {
 public:
  explicit WindowsSerialLink(std::function<std::string()> device) : device_(std::move(device)) {}
  ~WindowsSerialLink() override { WindowsSerialLink::CloseDevice(); }

  bool PortOpen() const override { return handle_ != INVALID_HANDLE_VALUE; }

 private:
  void OpenDevice(const SerialSettings& settings) override {
    name_ = device_();
    handle_ = OpenHandle(name_);
    if (PortOpen() && Configure(settings)) return;
    const std::string cause = SystemMessage(LastError()) + " (" + name_ + ")";
    CloseDevice();
    fathomline::Raise(FaultNumber::DeviceError, cause);
  }

  bool Configure(const SerialSettings& settings) const {
    DCB state{};
    state.DCBlength = sizeof state;
    if (::GetCommState(handle_, &state) == 0) return false;
    state.BaudRate = static_cast<DWORD>(settings.baud);
    state.fBinary = TRUE;
    state.Parity = ParityOf(settings.parity);
    state.fParity = state.Parity != NOPARITY;
    state.ByteSize = static_cast<BYTE>(settings.dataBits);
    state.StopBits = settings.twoStopBits ? TWOSTOPBITS : ONESTOPBIT;
    // No handshake: receivers have none, and are often powered by the two lines.
    state.fOutxCtsFlow = state.fOutxDsrFlow = state.fDsrSensitivity = FALSE;
    state.fOutX = state.fInX = state.fErrorChar = state.fNull = state.fAbortOnError = FALSE;
    state.fDtrControl = DTR_CONTROL_ENABLE;
    state.fRtsControl = RTS_CONTROL_ENABLE;
    // Reading returns at once with what there is.
    COMMTIMEOUTS timeouts{};
    timeouts.ReadIntervalTimeout = MAXDWORD;
    ::SetupComm(handle_, kBufferSize, 4096);
    return ::SetCommState(handle_, &state) != 0 && ::SetCommTimeouts(handle_, &timeouts) != 0;
  }

  void CloseDevice() override {
    if (PortOpen()) ::CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE));
    cause_.reset();
  }

  // The state of the port, with the errors since it was last asked for.
  COMSTAT State(DWORD& errors) {
    COMSTAT state{};
    errors = 0;
    if (::ClearCommError(handle_, &errors, &state) == 0) Fail();
    return state;
  }

  std::size_t Waiting() override {
    DWORD errors = 0;
    const COMSTAT state = State(errors);
    pending_ |= errors;
    return state.cbInQue;
  }

  std::string Take() override {
    std::string bytes(kBufferSize, '\0');
    DWORD count = 0;
    if (::ReadFile(handle_, bytes.data(), kBufferSize, &count, nullptr) == 0) Fail();
    bytes.resize(count);
    return bytes;
  }

  void LookForErrors() override {
    DWORD errors = 0;
    State(errors);
    errors |= std::exchange(pending_, 0);
    struct Row {
      DWORD flag;
      fathomline::CommEvent event;
    };
    constexpr Row kRows[] = {{CE_BREAK, fathomline::CommEvent::Break},
                             {CE_FRAME, fathomline::CommEvent::Framing},
                             {CE_OVERRUN, fathomline::CommEvent::Overrun},
                             {CE_RXOVER, fathomline::CommEvent::ReceiveOverflow},
                             {CE_RXPARITY, fathomline::CommEvent::Parity}};
    for (const Row& row : kRows) {
      if ((errors & row.flag) != 0) Raise(row.event);
    }
  }

  // Whatever a port refuses while it is open, it refuses because its device has gone.
  void Fail() {
    if (!cause_) cause_ = "The device has gone: " + name_ + " (" + SystemMessage(LastError()) + ")";
  }

  std::optional<std::string> Lost() override { return cause_; }

  std::function<std::string()> device_;
  std::string name_;
  HANDLE handle_ = INVALID_HANDLE_VALUE;
  DWORD pending_ = 0;
  std::optional<std::string> cause_;
};

}  // namespace

std::unique_ptr<SerialLink> MakeSerialLink(std::function<std::string()> device) {
  return std::make_unique<WindowsSerialLink>(std::move(device));
}

// The device manager names a port "USB Serial Port (COM5)".
std::string DescribeSerialDevice(const std::string& device) {
  HDEVINFO const ports =
      ::SetupDiGetClassDevsW(&GUID_DEVCLASS_PORTS, nullptr, nullptr, DIGCF_PRESENT);
  if (ports == INVALID_HANDLE_VALUE) return {};
  const std::string ending = " (" + device + ")";
  std::string description;
  SP_DEVINFO_DATA port{};
  port.cbSize = sizeof port;
  for (DWORD i = 0; ::SetupDiEnumDeviceInfo(ports, i, &port) != 0; ++i) {
    std::array<wchar_t, 256> text{};
    if (::SetupDiGetDeviceRegistryPropertyW(ports, &port, SPDRP_FRIENDLYNAME, nullptr,
                                            reinterpret_cast<BYTE*>(text.data()),
                                            sizeof text - sizeof(wchar_t), nullptr) == 0) {
      continue;
    }
    const std::string name = PathText(text.data());
    if (name.ends_with(ending)) description = name.substr(0, name.size() - ending.size());
  }
  ::SetupDiDestroyDeviceInfoList(ports);
  return description;
}

void ProbeSerialDevice(SerialPortInfo& info) {
  HANDLE const handle = OpenHandle(info.device);
  if (handle != INVALID_HANDLE_VALUE) {
    DCB state{};
    state.DCBlength = sizeof state;
    info.present = ::GetCommState(handle, &state) != 0;
    ::CloseHandle(handle);
  } else {
    const DWORD error = ::GetLastError();
    info.busy = error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION;
    info.present = info.busy;
  }
}

}  // namespace fathomline
