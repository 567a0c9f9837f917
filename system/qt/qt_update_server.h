#pragma once

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QString>
#include <QUrl>
#include <memory>

#include "startup/update_check.h"

namespace corvanel {

/// The update server over HTTPS; over plain HTTP only on this computer itself. A certificate that
/// is wrong, a redirection to anywhere less safe and a server that keeps silent are failures.
class QtUpdateServer : public UpdateServer {
 public:
  /// `base` ends in a slash. `patience`: milliseconds without a byte after which a server is given
  /// up.
  explicit QtUpdateServer(const QUrl& base, int patience = 4000);

  bool Connected() override;
  std::string DateOf(const std::string& name) override;
  Result<std::string> Fetch(const std::string& name) override;
  Result<int64_t> Begin(const std::string& name) override;
  Result<std::string> Next() override;

 private:
  bool Allowed() const;
  std::unique_ptr<QNetworkReply> Get(const std::string& name);
  bool WaitForHead(QNetworkReply& reply) const;

  QUrl base_;
  int patience_;
  QNetworkAccessManager network_;
  std::unique_ptr<QNetworkReply> download_;
};

/// Where the releases are: the address of the build, or that of the environment variable
/// CORVANEL_UPDATE_URL.
QUrl UpdateUrl();

}  // namespace corvanel
