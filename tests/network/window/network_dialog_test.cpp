#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "network/window/frm_options_network.h"
#include "network/window/qr_view.h"
#include "tests/support/favourites_bench.h"
#include "tests/support/letters.h"
#include "tests/support/network_bench.h"

namespace corvanel {
namespace {

class NetworkDialogTest : public testing::Test {
 protected:
  FavouritesBench bench_;
  NetworkBench network_{bench_.bench, bench_.notices};
  NetworkDesk& desk_ = network_.desk;
  FrmOptionsNetwork dialog_{{bench_.session.options,
                             bench_.table,
                             desk_,
                             {"192.168.1.20", "10.0.0.5"},
                             bench_.bench.errors},
                            nullptr};
  QCheckBox* on_ = dialog_.findChild<QCheckBox*>("chkNetwork");
  QLineEdit* port_ = dialog_.findChild<QLineEdit*>("txtPort");
  QPushButton* ok_ = dialog_.findChild<QPushButton*>("cmdOK");
  QString Text(const char* name) { return dialog_.findChild<QLabel*>(name)->text(); }
};

TEST_F(NetworkDialogTest, EveryControlHasALetterOfItsOwn) {
  ExpectLetters(dialog_);
}

TEST_F(NetworkDialogTest, TheAddressAndItsCodeFollowTheControls) {
  EXPECT_FALSE(on_->isChecked());
  EXPECT_EQ(Text("lblAddress"), "");
  on_->click();
  EXPECT_EQ(Text("lblAddress"), "http://192.168.1.20:8080/");
  dialog_.findChild<QComboBox*>("cboAddress")->setCurrentIndex(1);
  port_->setText("9000");
  EXPECT_EQ(Text("lblAddress"), "http://10.0.0.5:9000/");
  EXPECT_EQ(dialog_.findChild<QrView*>("qrAddress")->accessibleName(), "http://10.0.0.5:9000/");
  for (const char* wrong : {"", "80", "70000"}) {
    port_->setText(wrong);
    EXPECT_FALSE(ok_->isEnabled()) << wrong;
    EXPECT_EQ(Text("lblAddress"), "");
    EXPECT_EQ(Text("lblState"), "The port is a number from 1024 to 65535.");
  }
}

TEST_F(NetworkDialogTest, OkServesAndStoresAndCancelDoesNeither) {
  const auto server = WebServer::Listen("127.0.0.1", 0, kNoParts, {});
  const int port = server.Value()->Port() == 65535 ? 65534 : server.Value()->Port() + 1;
  on_->click();
  port_->setText(QString::number(port));
  dialog_.findChild<QPushButton*>("cmdCancel")->click();
  EXPECT_FALSE(bench_.session.options.NetworkOn);
  EXPECT_FALSE(desk_.Serves());
  ok_->click();
  EXPECT_TRUE(desk_.Serves());
  EXPECT_EQ(bench_.store.GetSetting("Timer", "NetworkOn"), "True");
  EXPECT_EQ(bench_.store.GetSetting("Timer", "NetworkPort"), std::to_string(port));
}

}  // namespace
}  // namespace corvanel
