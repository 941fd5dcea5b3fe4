#include "support/fwi18n.h"

#include <gtest/gtest.h>
#include <locale.h>

#include <cstdlib>
#include <string>

#include "support/settings.h"
#include "test_env.h"

namespace {

// Every test runs with the locale variables cleared and the library
// directory in a temporary tree, so only the catalogues made here exist.
class Fwi18nTest : public testing::Test {
 protected:
  void SetUp() override { set_from_env(); }
  void TearDown() override {
    setlocale(LC_ALL, "C");
    set_from_env();
  }

  // Compiles a catalogue for `locale_name` with message (set 41, 1).
  void make_catalogue(const std::string& locale_name, const std::string& text) {
    std::string dir = lib_ + "/locale/" + locale_name + "/LC_MESSAGES";
    dir_.write("lib/locale/" + locale_name + "/LC_MESSAGES/source.msg", "$set 41\n1 " + text + "\n");
    std::string command = "gencat " + dir + "/test.cat " + dir + "/source.msg";
    ASSERT_EQ(system(command.c_str()), 0);
  }

  // The messages locale that fwi18n_init chooses.
  std::string chosen_locale(int force = 0) {
    char* locale = nullptr;
    int handle = fwi18n_init("test", &locale, force);
    std::string name = locale != nullptr ? locale : "";
    free(locale);
    if (handle != -1) close(handle);
    return name;
  }

  void close(int handle) {
    int current = s18n_catd;
    s18n_catd = handle;
    fwi18n_revert(current);
  }

  TempDir dir_;
  std::string lib_ = dir_.path() + "/lib";
  ScopedEnv etc_{"FERROWALL_ETC", dir_.path().c_str()};
  ScopedEnv base_{"FERROWALL_BASE", dir_.path().c_str()};
  ScopedEnv all_{"LC_ALL", nullptr};
  ScopedEnv lang_{"LANG", nullptr};
  ScopedEnv ctype_{"LC_CTYPE", nullptr};
  ScopedEnv messages_{"LC_MESSAGES", nullptr};
  ScopedEnv collate_{"LC_COLLATE", nullptr};
  ScopedEnv time_{"LC_TIME", nullptr};
};

TEST_F(Fwi18nTest, LocaleFromTheEnvironment) {
  const struct {
    const char* lang;
    const char* all;
    const char* messages;
    const char* ctype;
    int force_utf8;
    const char* expected;
  } cases[] = {
      {nullptr, nullptr, nullptr, nullptr, 0, "en_US"},
      {"C", nullptr, nullptr, nullptr, 0, "en_US"},  // plain LANG counts as unset
      {"POSIX", nullptr, nullptr, nullptr, 0, "en_US"},
      {"de_DE", nullptr, nullptr, nullptr, 0, "de_DE"},
      {nullptr, nullptr, "fr_FR", nullptr, 0, "fr_FR"},
      {nullptr, "it_IT", "fr_FR", nullptr, 0, "it_IT"},
      {nullptr, nullptr, nullptr, nullptr, 1, "en_US.UTF-8"},
      {"de_DE.ISO8859-1", nullptr, nullptr, "de_DE.UTF-8", 0, "de_DE.UTF-8"},
  };
  for (const auto& c : cases) {
    ScopedEnv lang("LANG", c.lang);
    ScopedEnv all("LC_ALL", c.all);
    ScopedEnv messages("LC_MESSAGES", c.messages);
    ScopedEnv ctype("LC_CTYPE", c.ctype);
    EXPECT_EQ(chosen_locale(c.force_utf8), c.expected) << (c.lang ? c.lang : "-") << " " << c.expected;
  }
}

TEST_F(Fwi18nTest, WithoutCatalogueEveryMessageIsItsDefault) {
  char* locale = nullptr;
  EXPECT_EQ(fwi18n_init("test", &locale, 0), -1);
  free(locale);
  EXPECT_EQ(s18n_catd, -1);
  const char* text = "default text";
  EXPECT_EQ(fwi18n_text(41, 1, text), text);
}

TEST_F(Fwi18nTest, CatalogueTextReplacesTheDefault) {
  make_catalogue("en_US", "Hallo");
  char* locale = nullptr;
  int handle = fwi18n_init("test", &locale, 0);
  free(locale);
  ASSERT_NE(handle, -1);
  int before = s18n_catd;
  s18n_catd = handle;
  EXPECT_STREQ(fwi18n_text(41, 1, "Hello"), "Hallo");
  EXPECT_STREQ(fwi18n_text(41, 2, "Missing"), "Missing");
  fwi18n_revert(before);
  EXPECT_EQ(s18n_catd, before);
}

}  // namespace
