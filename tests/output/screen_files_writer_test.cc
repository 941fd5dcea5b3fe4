#include "output/screen_files_writer.h"

#include <sstream>

#include "model/registry.h"
#include "output/output_fixture.h"
#include "screen/ferrowall.h"

namespace {

TList<unsigned>* receivers(int count) {
  TList<unsigned>* list = new TList<unsigned>;
  for (int i = 1; i <= count; ++i) list->Append(*new unsigned(ip("10.0.0.0") + i));
  return list;
}

class ScreenFilesWriterTest : public testing::Test {
 protected:
  Ferrowall& AddScreen(const char* name, FerrowallSettings settings) {
    Ferrowall* screen = new Ferrowall(name, settings);
    registry_.Screens(*screen);
    return *screen;
  }

  Ferrowall& AddHAScreen(const char* name, int primary, int secondary, const char* ha_ip,
                         const char* master) {
    FerrowallSettings settings;
    settings.ha_primary = primary;
    settings.ha_secondary = secondary;
    settings.ha_ip = ha_ip != nullptr ? ip(ha_ip) : 0;
    settings.master = master;
    return AddScreen(name, settings);
  }

  // A screen with an inline ADMIN_IP (or none) and a master.
  Ferrowall& AddSlave(const char* name, const char* admin_ip, const char* master, int secondary) {
    FerrowallSettings settings;
    if (admin_ip != nullptr) {
      simplerange range = {ip(admin_ip), ip(admin_ip), RS_ADDRESSES};
      settings.admin_ip = new Address(&range);
    }
    settings.master = master;
    settings.ha_secondary = secondary;
    return AddScreen(name, settings);
  }

  void ResolveScreens() {
    for (TList_Cell<Entity>* cell = registry_.Screens().Head(); cell != nullptr; cell = cell->Next()) {
      EXPECT_EQ(cell->Data()->Resolve(CO_SCREEN, registry_.Screens(), errors_), 0) << errors_.str();
      EXPECT_EQ(cell->Data()->Resolve(CO_ADDRESS, registry_.Addresses(), errors_), 0) << errors_.str();
    }
  }

  std::string ScreenFile(const Ferrowall& screen) {
    std::ostringstream out;
    ScreenFilesWriter::GenerateScreenFile(out, screen, warnings_);
    return out.str();
  }

  Registry registry_;
  std::ostringstream errors_;
  std::ostringstream warnings_;
};

TEST_F(ScreenFilesWriterTest, SixReceiversAreCutToFiveWithOneWarning) {
  FerrowallSettings settings;
  settings.ha_secondary = 1;
  settings.snmp_recipients = receivers(6);
  settings.snmp_timer = 30;
  settings.log_size = 100;
  Ferrowall& screen = AddScreen("gate", settings);
  EXPECT_EQ(ScreenFile(screen),
            "HA secondary\nSNMP_ALERTS 10.0.0.1 10.0.0.2 10.0.0.3 10.0.0.4 10.0.0.5\nLOG_SIZE 100\n");
  EXPECT_EQ(warnings_.str(), "Warning: Exceeded maximum of 5 supported SNMP receivers.\n");
  ASSERT_TRUE(ScreenFilesWriter::WantsSNMPTimer(screen));
  std::ostringstream timer;
  ScreenFilesWriter::GenerateSNMPTimer(timer, screen);
  EXPECT_EQ(timer.str(), "30\n");
}

TEST_F(ScreenFilesWriterTest, NoReceiversMeansNoAlertLineAndNoTimer) {
  FerrowallSettings settings;
  settings.snmp_timer = 30;
  Ferrowall& screen = AddScreen("gate", settings);
  EXPECT_EQ(ScreenFile(screen), "LOG_SIZE 0\n");
  EXPECT_FALSE(ScreenFilesWriter::WantsSNMPTimer(screen));
}

TEST_F(ScreenFilesWriterTest, DestShowsTheDestinationCheck) {
  FerrowallSettings settings;
  settings.dest_check = 1;
  std::ostringstream out;
  ScreenFilesWriter::GenerateDest(out, AddScreen("checking", settings));
  ScreenFilesWriter::GenerateDest(out, AddScreen("plain", FerrowallSettings()));
  EXPECT_EQ(out.str(), "DEST_CHECK 1\nDEST_CHECK 0\n");
}

TEST_F(ScreenFilesWriterTest, SlavesAreScreensOfThisMasterWithAdminIPAndNoSecondaryRole) {
  Ferrowall& boss = AddScreen("boss", FerrowallSettings());
  AddScreen("other", FerrowallSettings());
  AddSlave("s1", "10.1.0.1", "boss", 0);
  AddSlave("s2", "10.1.0.2", "boss", 1);
  AddSlave("s3", "10.1.0.3", "other", 0);
  AddSlave("s4", nullptr, "boss", 0);
  AddSlave("s5", "10.1.0.5", "boss", 0);
  ResolveScreens();
  std::ostringstream out;
  ScreenFilesWriter::GenerateSlaves(out, boss, registry_);
  EXPECT_EQ(out.str(), "s1 10.1.0.1\ns5 10.1.0.5\n");
  EXPECT_EQ(ScreenFilesWriter::HAPrimary(boss), nullptr);
}

TEST_F(ScreenFilesWriterTest, HAListsThePrimaryThenItsSecondariesInListOrder) {
  FerrowallSettings primary_settings;
  primary_settings.ha_primary = 1;
  primary_settings.ha_ip = ip("10.9.0.1");
  primary_settings.ha_ether = "08:00:20:0a:0b:0c";
  Ferrowall& primary = AddScreen("p", primary_settings);
  Ferrowall& secondary = AddHAScreen("q", 0, 1, "10.9.0.2", "p");
  AddHAScreen("stranger", 0, 1, "10.9.0.7", "elsewhere");
  AddScreen("elsewhere", FerrowallSettings());
  AddHAScreen("orphan", 0, 1, "10.9.0.8", nullptr);
  AddHAScreen("r", 0, 1, nullptr, "p");
  ResolveScreens();
  ASSERT_EQ(ScreenFilesWriter::HAPrimary(secondary), &primary);
  ASSERT_EQ(ScreenFilesWriter::HAPrimary(primary), &primary);
  std::ostringstream out;
  ScreenFilesWriter::GenerateHA(out, primary, registry_);
  EXPECT_EQ(out.str(),
            "STATUS ON\nETHER_ADDR 8:0:20:a:b:c\n"
            "HA_HOST \"p\" 1 10.9.0.1\nHA_HOST \"q\" 2 10.9.0.2\nHA_HOST \"r\" 3\n");
}

}  // namespace
