#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include "network/window/dlg_let_in.h"
#include "network/window/frm_options_network.h"
#include "tests/support/favourites_bench.h"
#include "tests/support/letters.h"
#include "tests/support/network_bench.h"
#include "widgets/qr_view.h"

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
  EXPECT_EQ(Text("lblRooms"), QString("Rooms that name the same broker stand on one page: "
                                      "http://192.168.1.20:%1/rooms")
                                  .arg(port));
  const std::pair<const char*, const char*> rooms[] = {
      {"txtRoom", "Hall A"}, {"txtBroker", "no such"}, {"txtPassword", "secret"}};
  for (const auto& [box, text] : rooms) dialog_.findChild<QLineEdit*>(box)->setText(text);
  ok_->click();
  EXPECT_TRUE(desk_.Serves());
  EXPECT_EQ(bench_.store.GetSetting("Timer", "NetworkRoom"), "Hall A");
  EXPECT_EQ(bench_.store.GetSetting("Timer", "NetworkBroker"), "no such");
  EXPECT_EQ(bench_.store.GetSetting("Timer", "NetworkBrokerPassword"), "secret");
  EXPECT_EQ(bench_.store.GetSetting("Timer", "NetworkOn"), "True");
  EXPECT_EQ(bench_.store.GetSetting("Timer", "NetworkPort"), std::to_string(port));
}

TEST_F(NetworkDialogTest, ADeviceIsLetInByACodeThatIsGoodOnceAndWhileItShows) {
  RemoteDesk& remotes = network_.remotes;
  {
    DlgLetIn dialog(remotes, "http://192.168.1.20:8080/", nullptr);
    ExpectLetters(dialog);
    const auto text = [&](const char* name) { return dialog.findChild<QLabel*>(name)->text(); };
    const QString code = QString::fromStdString(remotes.Code());
    EXPECT_EQ(text("lblCode").remove(' '), code);
    EXPECT_EQ(dialog.findChild<QrView*>("qrCode")->accessibleName(),
              "http://192.168.1.20:8080/remote#" + code);
    remotes.Hear(
        {1, 1, {std::string(64, 'a'), "<b>Ann"}, "join", KeyOfCode(code.toStdString()), "", ""});
    QTest::qWait(400);
    EXPECT_NE(text("lblCode").remove(' '), code);
    EXPECT_TRUE(text("lblState").startsWith("<b>Ann was let in")) << text("lblState").toStdString();
  }
  EXPECT_EQ(remotes.Code(), "");
}

TEST_F(NetworkDialogTest, TheDevicesAreListedAndCanBeSentAway) {
  RemoteDesk& remotes = network_.remotes;
  network_.keeper.kept =
      TextOf({{std::string(64, 'a'), "Ann's phone"}, {std::string(64, 'b'), "Bob"}});
  remotes.Load();
  FrmOptionsNetwork dialog({bench_.session.options, bench_.table, desk_, {}, bench_.bench.errors},
                           nullptr);
  auto* list = dialog.findChild<QListWidget*>("lstDevices");
  auto* away = dialog.findChild<QPushButton*>("cmdSendAway");
  ASSERT_EQ(list->count(), 2);
  EXPECT_FALSE(away->isEnabled()) << "none is chosen";
  list->setCurrentRow(0);
  away->click();
  ASSERT_EQ(list->count(), 1);
  EXPECT_EQ(list->item(0)->text(), "Bob");
  EXPECT_EQ(remotes.Devices().size(), 1U);
  EXPECT_FALSE(dialog.findChild<QPushButton*>("cmdLetIn")->isEnabled()) << "in no network";
}

}  // namespace
}  // namespace corvanel
