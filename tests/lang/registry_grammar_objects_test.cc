// The statements of services, state engines, interfaces and screens, and
// the stack limit of list clauses.
#include <gtest/gtest.h>

#include <sstream>

#include "crypto/algorithm.h"
#include "crypto/ipsec_ike_esp_params.h"
#include "model/address.h"
#include "lang/parsed_configuration.h"
#include "screen/ferrowall.h"
#include "screen/interface_clk.h"
#include "services/service.h"
#include "services/state_engine.h"
#include "services/state_engine_internal.h"

namespace {

std::string Printed(const Entity& entity) {
  std::ostringstream out;
  entity.Print(out);
  return out.str();
}

TEST(ServiceGrammarTest, FiltersDiscriminatorsAndReverseFilters) {
  ParsedConfiguration parsed(
      "web SERVICE tcp 80 8000 - 8080 udp * BROADCAST PARAMS ( 1 -2 ) REVERSE icmp 3 PARAMS ( ) SCREEN s ;\n"
      "bare SERVICE ;\n"
      "both SERVICE_GROUP web \"bare\" COMMENT \"two\" ;\n");
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  Service* web = parsed.Find<Service>(parsed.registry().Services(), "web", "s");
  EXPECT_EQ(Printed(*web),
            "\"web\"\tSERVICE\ttcp\t80 8000 - 8080 \tudp\t * \tBROADCAST\tPARAMS\t( 1 -2  ) "
            " REVERSE \ticmp\t3 \tSCREEN\t\"s\"");
  Service* group = parsed.Find<Service>(parsed.registry().Services(), "both");
  EXPECT_EQ(Printed(*group), "\"both\"\tSERVICE_GROUP\t\"web\"\t\"bare\"\tCOMMENT\t\"two\"");
  EXPECT_EQ(Names(parsed.registry().Services()), "* web bare both ");
}

TEST(ServiceGrammarTest, NumbersWithoutBlankAreTwoDiscriminators) {
  ParsedConfiguration parsed("s SERVICE tcp 1-2 ;");
  ASSERT_EQ(parsed.result, 0);
  EXPECT_EQ(Printed(*parsed.Find<Service>(parsed.registry().Services(), "s")),
            "\"s\"\tSERVICE\ttcp\t1 4294967294 ");
}

// The end-to-end outputs pin engines of both directions; a reverse-only one is not among them.
TEST(StateEngineGrammarTest, InternalAndUsedEngines) {
  ParsedConfiguration parsed(
      "tcp_engine STATE_ENGINE ;\n"
      "tcp STATE_ENGINE tcp_engine port FORWARD 1 2 0xffff 3 10 20 ;\n"
      "back STATE_ENGINE tcp_engine port REVERSE 1 4 65535 0 ;\n");
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  EXPECT_EQ(Names(parsed.registry().StateEngineInternals()), "tcp_engine ");
  StateEngine* tcp = parsed.Find<StateEngine>(parsed.registry().StateEngines(), "tcp");
  EXPECT_EQ(tcp->MaxValue(), 0xffffu);
  EXPECT_EQ(tcp->DefaultParams().Length(), 2);
  StateEngine* back = parsed.Find<StateEngine>(parsed.registry().StateEngines(), "back");
  EXPECT_EQ(back->Forward(), 0);
  EXPECT_EQ(back->Reverse(), 1);
}

TEST(InterfaceGrammarTest, EveryKindWithItsOptions) {
  ParsedConfiguration parsed(
      "le0 INTERFACE ADMIN inside LOG SESSION SNMP ICMP HOST_UNREACHABLE SCREEN gate ;\n"
      "le1 INTERFACE GWY outside COMPLETE shared LOG_DETAIL ICMP_PORT_UNREACHABLE ;\n"
      "le2 INTERFACE DISABLED spare COMMENT \"off\" ;\n"
      "le3 INTERFACE HA pair SNMP_NONE ICMP_NONE ;\n"
      "le4 INTERFACE CLK dark LOG_NONE 10.0.0.1 10.0.0.2 ;\n");
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  Registry& registry = parsed.registry();
  EXPECT_EQ(Names(registry.AdminInterfaces()), "le0 ");
  EXPECT_EQ(Names(registry.GWYInterfaces()), "le1 le3 ");
  EXPECT_EQ(Names(registry.DisabledInterfaces()), "le2 ");
  EXPECT_EQ(Names(registry.CLKInterfaces()), "le4 ");
  Interface* admin = parsed.Find<Interface>(registry.AdminInterfaces(), "le0", "gate");
  // LOG SESSION on an interface means a summary.
  EXPECT_EQ(admin->Log(), LOG_SUMMARY);
  EXPECT_EQ(admin->ICMP(), ICMP_HOST_UNREACHABLE);
  EXPECT_STREQ(admin->ProtectedAddress()->Name(), "inside");
  Interface* routing = parsed.Find<Interface>(registry.GWYInterfaces(), "le1");
  EXPECT_EQ(routing->Strict(), 1);
  EXPECT_STREQ(routing->Overlap()->Name(), "shared");
  EXPECT_EQ(routing->Log(), LOG_DETAIL);
  EXPECT_EQ(parsed.Find<Interface>(registry.GWYInterfaces(), "le3")->Type(), INTERFACE_HA);
  InterfaceCLK* stealth = parsed.Find<InterfaceCLK>(registry.CLKInterfaces(), "le4");
  ASSERT_EQ(stealth->Routers()->Length(), 2);
  EXPECT_EQ(*stealth->Routers()->Head()->Data(), 0x0A000001u);
}

TEST(InterfaceGrammarTest, NamesAreUniqueAcrossAllLists) {
  ParsedConfiguration parsed("le0 INTERFACE GWY a ;\nle0 INTERFACE ADMIN b ;\nle0 INTERFACE GWY c SCREEN s ;\n");
  ASSERT_EQ(parsed.result, 0);
  EXPECT_EQ(Names(parsed.registry().AdminInterfaces()), "");
  EXPECT_EQ(Names(parsed.registry().GWYInterfaces()), "le0 le0 ");
}

TEST(ScreenGrammarTest, EveryOptionInItsPlace) {
  ParsedConfiguration parsed(
      "gate SCREEN ADMIN_IP 10.0.0.1 IKE \"DES\" \"MD5\" 2 \"PRE-SHARED\" cert ESP \"3DES\" \"NONE\" AH \"SHA1\"\n"
      "  CERTIFICATE skipcert KEYS k DATAS d MACS m COMPRESSIONS c TUNNEL tun MASTER boss TIMEOUT 30\n"
      "  CERTIFICATE_DISCOVERY DEST_CHECK ROUTING DNS NIS LOGSIZE 4096 HA_PRIMARY HA_SECONDARY\n"
      "  HA_ADMIN_IP 192.168.0.1 HA_ETHER \"8:0:20:1:2:3\" 10.1.1.1 10.1.1.2 SNMP_TIMER 60\n"
      "  CLK 172.16.5.9 255.255.255.0 COMMENT \"all of it\" ;\n");
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  Ferrowall* gate = parsed.Find<Ferrowall>(parsed.registry().Screens(), "gate");
  ASSERT_NE(gate, nullptr);
  EXPECT_EQ(gate->OakleyGroup(), 2);
  EXPECT_EQ(gate->Timeout(), 30);
  EXPECT_EQ(gate->CertificateDiscovery() + gate->dest_check() + gate->Routing() + gate->DNS() + gate->NIS(), 5);
  EXPECT_EQ(gate->LogSize(), 4096);
  EXPECT_EQ(gate->HA_Primary() + gate->HA_Secondary(), 2);
  EXPECT_EQ(gate->HA_IP(), 0xC0A80001u);
  EXPECT_EQ(gate->HA_Ether()[5], 3);
  EXPECT_EQ(*gate->SNMP_Recipients()->Tail()->Data(), 0x0A010102u);
  ASSERT_NE(gate->CLKNetwork(), nullptr);
  EXPECT_EQ(gate->CLKNetwork()->End(), 0xAC1005FFu);
  EXPECT_EQ(gate->CLKNetwork()->Style(), RS_DOTTED_MASK);
  EXPECT_TRUE(gate->Refer(CO_SCREEN, "boss", 0));
  EXPECT_TRUE(gate->Refer(CO_CERTIFICATE, "skipcert", 0));
  EXPECT_EQ(Names(parsed.registry().Algorithms()), "DES MD5 PRE-SHARED 3DES SHA1 ");
  EXPECT_EQ(Names(parsed.registry().AlgorithmKeyV2()), "k ");
  ASSERT_NE(gate->ESPParams(), nullptr);
  EXPECT_EQ(gate->ESPParams()->AuthenticationName(), nullptr);
}

TEST(ScreenGrammarTest, IkeWithoutAlgorithmsRegistersNothing) {
  ParsedConfiguration parsed("gate SCREEN IKE NONE NONE 0 NONE cert CLKNET 10.0.0.0/8 ;\n");
  ASSERT_EQ(parsed.result, 0) << parsed.err;
  EXPECT_EQ(Names(parsed.registry().Algorithms()), "");
  Ferrowall* gate = parsed.Find<Ferrowall>(parsed.registry().Screens(), "gate");
  EXPECT_TRUE(gate->Refer(CO_CERTIFICATE, "cert", 0));
  EXPECT_EQ(gate->CLKNetwork()->Style(), RS_PREFIX);
  EXPECT_EQ(gate->CLKNetwork()->End(), 0x0AFFFFFFu);
}

TEST(GrammarStackTest, ListsLongerThanTheStackOverflow) {
  std::string text = "g ADDRESS";
  for (int i = 0; i < 200000; ++i) text += " m";
  text += " ;";
  ParsedConfiguration parsed(text);
  EXPECT_EQ(parsed.result, 2);
  EXPECT_EQ(parsed.err, "parser stack overflow near token m.\n");
  EXPECT_EQ(parsed.config.ParseErrors(), 1);
}

}  // namespace
