#pragma once

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QString>
#include <QUrl>
#include <functional>
#include <memory>

#include "startup/update_check.h"

namespace corvanel {

/// The update server over HTTPS; over plain HTTP only on this computer itself. A certificate that
/// is wrong, a redirection to anywhere less safe and a server that keeps silent are failures.
class QtUpdateServer : public UpdateServer {
 public:
  /// `base` ends in a slash. `patience`: milliseconds after which a text (its date and the text
  /// itself, together), or a download without a byte, is given up.
  explicit QtUpdateServer(const QUrl& base, int patience = 5000);
  /// Ends whatever is waited for; nothing is waited for any more.
  void Stop();

  bool Connected() override;
  std::string Address() const override { return base_.toString().toStdString(); }
  std::string DateOf(const std::string& name) override;
  Result<std::string> Fetch(const std::string& name) override;
  Result<int64_t> Begin(const std::string& name) override;
  Result<std::string> Next() override;

 private:
  bool Allowed() const;
  std::unique_ptr<QNetworkReply> Get(const std::string& name);
  bool WaitForHead(QNetworkReply& reply, QDeadlineTimer until);
  bool WaitFor(QNetworkReply& reply, QDeadlineTimer until, const std::function<bool()>& done);

  QUrl base_;
  int patience_;
  QDeadlineTimer textUntil_;
  bool stopped_ = false;
  QEventLoop* waiting_ = nullptr;
  QNetworkAccessManager network_;
  std::unique_ptr<QNetworkReply> download_;
};

/// Where the releases are: the address of the build, or that of the environment variable
/// CORVANEL_UPDATE_URL.
QUrl UpdateUrl();

}  // namespace corvanel
