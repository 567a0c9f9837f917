#include "system/former_settings.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "tests/support/fakes.h"

namespace corvanel {
namespace {

constexpr const wchar_t* kApplication = L"Software\\VB and VBA Program Settings\\Olvendra";

void Write(const std::wstring& section, const std::wstring& key, const std::wstring& value,
           DWORD type = REG_SZ) {
  RegSetKeyValueW(HKEY_CURRENT_USER, (std::wstring(kApplication) + L"\\" + section).c_str(),
                  key.c_str(), type, value.c_str(),
                  static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

TEST(FormerSettingsTest, AreTakenOverWholeAndStay) {
  RegDeleteTreeW(HKEY_CURRENT_USER, kApplication);
  FakeStore none;
  EXPECT_FALSE(TakeOverFormerSettings(none));
  const std::wstring longText(3000, L'x');
  Write(L"Timer", L"nRounds", L"9");
  Write(L"Timer", L"Header", L"Caf\x00E9 \x2660");
  Write(L"Timer", L"BWSfolder", longText);
  Write(L"Timer", L"Number", L"7", REG_DWORD);
  Write(L"Timer20", L"Name", L"Friday");
  Write(L"TimerFont3", L"FontName", L"Verdana");
  for (int i = 0; i < 2; ++i) {
    FakeStore store;
    EXPECT_TRUE(TakeOverFormerSettings(store));
    EXPECT_EQ(store.GetSetting("Timer", "nrounds"), "9");
    EXPECT_EQ(store.GetSetting("Timer", "Header"), "Caf\xC3\xA9 \xE2\x99\xA0");
    EXPECT_EQ(store.GetSetting("Timer", "BWSfolder")->size(), longText.size());
    EXPECT_EQ(store.GetSetting("Timer", "Number"), std::nullopt);
    EXPECT_EQ(store.GetSetting("Timer20", "Name"), "Friday");
    EXPECT_EQ(store.GetSetting("TimerFont3", "FontName"), "Verdana");
  }
  RegDeleteTreeW(HKEY_CURRENT_USER, kApplication);
}

}  // namespace
}  // namespace corvanel
