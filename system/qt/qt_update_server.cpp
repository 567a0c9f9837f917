#include "system/qt/qt_update_server.h"

#include <QHostAddress>
#include <QNetworkInterface>
#include <QNetworkReply>
#include <QTimer>
#include <algorithm>

namespace corvanel {
namespace {

constexpr qint64 kLargestText = 65536;  // bytes of a version file
constexpr qint64 kChunk = 20480;

bool OnThisComputer(const QUrl& url) {
  return url.host() == "localhost" || QHostAddress(url.host()).isLoopback();
}

}  // namespace

QUrl UpdateUrl() {
  const QString other = qEnvironmentVariable("CORVANEL_UPDATE_URL");
  return other.isEmpty() ? QUrl(CORVANEL_UPDATE_URL) : QUrl(other);
}

QtUpdateServer::QtUpdateServer(const QUrl& base, int patience)
    : base_(base), patience_(patience), textUntil_(patience) {
  network_.setRedirectPolicy(QNetworkRequest::SameOriginRedirectPolicy);
}

void QtUpdateServer::Stop() {
  stopped_ = true;
  if (waiting_ != nullptr) waiting_->quit();
}

/// Lets windows live until something is true; false when it is not in time.
bool QtUpdateServer::WaitFor(QNetworkReply& reply, QDeadlineTimer until,
                             const std::function<bool()>& done) {
  QEventLoop loop;
  const auto look = [&] {
    if (done()) loop.quit();
  };
  const QMetaObject::Connection connections[] = {
      QObject::connect(&reply, &QNetworkReply::readyRead, &loop, look),
      QObject::connect(&reply, &QNetworkReply::metaDataChanged, &loop, look),
      QObject::connect(&reply, &QNetworkReply::finished, &loop, look)};
  QTimer::singleShot(until.remainingTime(), &loop, &QEventLoop::quit);
  waiting_ = &loop;
  if (!done() && !stopped_) loop.exec();
  waiting_ = nullptr;
  for (const auto& connection : connections) QObject::disconnect(connection);
  return done() && !stopped_;
}

bool QtUpdateServer::Allowed() const {
  return base_.isValid() &&
         (base_.scheme() == "https" || (base_.scheme() == "http" && OnThisComputer(base_)));
}

bool QtUpdateServer::Connected() {
  if (OnThisComputer(base_)) return true;
  const auto interfaces = QNetworkInterface::allInterfaces();
  return std::any_of(interfaces.begin(), interfaces.end(), [](const QNetworkInterface& way) {
    const auto flags = way.flags();
    return flags.testFlag(QNetworkInterface::IsUp) &&
           flags.testFlag(QNetworkInterface::IsRunning) &&
           !flags.testFlag(QNetworkInterface::IsLoopBack) && !way.addressEntries().isEmpty();
  });
}

std::unique_ptr<QNetworkReply> QtUpdateServer::Get(const std::string& name) {
  QNetworkRequest request(base_.resolved(QUrl(QString::fromStdString(name))));
  request.setRawHeader("Range", "bytes=0-");
  // The bytes as they lie on the server: their length is checked.
  request.setRawHeader("Accept-Encoding", "identity");
  request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
  return std::unique_ptr<QNetworkReply>(network_.get(request));
}

/// True when the server has begun to give the file.
bool QtUpdateServer::WaitForHead(QNetworkReply& reply, QDeadlineTimer until) {
  const auto status = [&] {
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  };
  const bool begun = WaitFor(reply, until, [&] {
    return reply.isFinished() || (status() >= 200 && status() < 300) || status() >= 400;
  });
  return begun && (status() == 200 || status() == 206) && reply.error() == QNetworkReply::NoError;
}

std::string QtUpdateServer::DateOf(const std::string& name) {
  if (!Allowed()) return {};
  textUntil_.setRemainingTime(patience_);
  const auto reply = Get(name);
  if (!WaitForHead(*reply, textUntil_)) return {};
  // "Fri, 20 Nov 2026 10:00:00 GMT": the day of the week is left out.
  const QByteArray date = reply->rawHeader("Last-Modified").mid(5, 20);
  reply->abort();
  return date.toStdString();
}

Result<std::string> QtUpdateServer::Fetch(const std::string& name) {
  if (!Allowed()) return Error{12005, "The address is not safe"};
  const auto reply = Get(name);
  const bool begun = WaitForHead(*reply, textUntil_);
  const bool whole = begun && WaitFor(*reply, textUntil_, [&] {
                       return reply->isFinished() || reply->bytesAvailable() > kLargestText;
                     });
  const int code = reply->error() == QNetworkReply::NoError ? 12007 : int{reply->error()};
  if (!whole || reply->error() != QNetworkReply::NoError) {
    return Error{code, reply->errorString().toStdString()};
  }
  if (reply->bytesAvailable() > kLargestText) return Error{12111, "The file is far too large"};
  return reply->readAll().toStdString();
}

Result<int64_t> QtUpdateServer::Begin(const std::string& name) {
  if (!Allowed()) return Error{12005, "The address is not safe"};
  download_ = Get(name);
  if (!WaitForHead(*download_, QDeadlineTimer(patience_))) {
    return Error{12007, "the server does not give the file"};
  }
  // What nobody has taken yet stays with the server.
  download_->setReadBufferSize(4 * kChunk);
  const QVariant length = download_->header(QNetworkRequest::ContentLengthHeader);
  return length.isValid() ? int64_t{length.toLongLong()} : int64_t{-1};
}

Result<std::string> QtUpdateServer::Next() {
  const bool heard = WaitFor(*download_, QDeadlineTimer(patience_), [this] {
    return download_->bytesAvailable() > 0 || download_->isFinished();
  });
  if (!heard) return Error{12007, "The server keeps silent"};
  const QByteArray chunk = download_->read(kChunk);
  if (chunk.isEmpty() && download_->error() != QNetworkReply::NoError) {
    return Error{download_->error(), download_->errorString().toStdString()};
  }
  return chunk.toStdString();
}

}  // namespace corvanel
