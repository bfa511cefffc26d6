#include "faces/qt/socket_links.h"

#include <QNetworkDatagram>
#include <QNetworkProxy>

#include "faces/qt/conversions.h"

namespace fathomline {
namespace {

// While a message box holds the link, no more than this waits in the program; the rest stays with
// the system, which makes a TCP peer wait and drops datagrams.
constexpr qint64 kBufferSize = 1 << 20;

struct ErrorNumber {
  QAbstractSocket::SocketError error;
  int number;
};
// The numbers by which users and manuals know these errors.
constexpr ErrorNumber kErrorNumbers[] = {
    {QAbstractSocket::ConnectionRefusedError, 10061},
    {QAbstractSocket::RemoteHostClosedError, 10054},
    {QAbstractSocket::HostNotFoundError, 11001},
    {QAbstractSocket::SocketAccessError, 10013},
    {QAbstractSocket::SocketResourceError, 10024},
    {QAbstractSocket::SocketTimeoutError, 10060},
    {QAbstractSocket::NetworkError, 10051},
    {QAbstractSocket::AddressInUseError, 10048},
};

int NumberOf(QAbstractSocket::SocketError error) {
  for (const ErrorNumber& row : kErrorNumbers) {
    if (row.error == error) return row.number;
  }
  return static_cast<int>(error);
}

}  // namespace

QtTcpLink::QtTcpLink() {
  socket_.setProxy(QNetworkProxy::NoProxy);
  socket_.setReadBufferSize(kBufferSize);
  QObject::connect(&socket_, &QTcpSocket::errorOccurred, &socket_,
                   [this](QAbstractSocket::SocketError error) {
                     failed_ = error != QAbstractSocket::RemoteHostClosedError;
                     peerGone_ = !failed_;
                     errors_.emplace_back(NumberOf(error), FromQt(socket_.errorString()));
                   });
}

LinkState QtTcpLink::State() const {
  if (failed_) return LinkState::Error;
  if (peerGone_) return LinkState::Closing;
  switch (socket_.state()) {
    case QAbstractSocket::HostLookupState:
      return LinkState::ResolvingHost;
    case QAbstractSocket::ConnectingState:
      return LinkState::Connecting;
    case QAbstractSocket::ConnectedState:
      return LinkState::Connected;
    case QAbstractSocket::BoundState:
      return LinkState::Open;
    case QAbstractSocket::ListeningState:
      return LinkState::Listening;
    case QAbstractSocket::ClosingState:
      return LinkState::Closing;
    case QAbstractSocket::UnconnectedState:
      break;
  }
  return LinkState::Closed;
}

void QtTcpLink::Close() {
  socket_.abort();
  errors_.clear();
  failed_ = peerGone_ = false;
}

void QtTcpLink::Connect() {
  Close();
  socket_.connectToHost(ToQt(host_), static_cast<quint16>(port_), QIODevice::ReadOnly);
}

std::string QtTcpLink::GetData() {
  return socket_.readAll().toStdString();
}

bool QtTcpLink::Poll(std::chrono::steady_clock::time_point) {
  if (socket_.bytesAvailable() > 0 && onDataArrival) onDataArrival();
  // The handler takes all, so what is there now has come since.
  if (socket_.bytesAvailable() > 0) return true;
  if (errors_.empty()) return false;
  const auto error = errors_.front();
  errors_.pop_front();
  if (onError) onError(error.first, error.second);
  return !errors_.empty();
}

LinkState QtUdpLink::State() const {
  return socket_.state() == QAbstractSocket::BoundState ? LinkState::Open : LinkState::Closed;
}

void QtUdpLink::Close() {
  socket_.close();
  buffer_.clear();
  arrivals_ = 0;
}

void QtUdpLink::Bind(int port) {
  if (port < 0 || port > 65535) Raise(FaultNumber::InvalidCall);
  Close();
  const QHostAddress any(QHostAddress::AnyIPv4);
  if (socket_.bind(any, static_cast<quint16>(port), QUdpSocket::DontShareAddress)) {
    // What comes in while the program is busy elsewhere is lost beyond this. The system allows what
    // it will.
    socket_.setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, kBufferSize);
    return;
  }
  const std::string cause = FromQt(socket_.errorString());
  Close();
  Raise(FaultNumber::DeviceError, cause);
}

void QtUdpLink::Drain() {
  while (socket_.hasPendingDatagrams() && buffer_.size() < kBufferSize) {
    const QByteArray data = socket_.receiveDatagram().data();
    buffer_.append(data.constData(), static_cast<std::size_t>(data.size()));
    ++arrivals_;
  }
}

std::string QtUdpLink::GetData() {
  Drain();
  return std::exchange(buffer_, {});
}

bool QtUdpLink::Poll(std::chrono::steady_clock::time_point until) {
  if (State() != LinkState::Open) return false;
  Drain();
  while (arrivals_ > 0 && std::chrono::steady_clock::now() < until) {
    --arrivals_;
    if (onDataArrival) onDataArrival();
  }
  return arrivals_ > 0;
}

}  // namespace fathomline
