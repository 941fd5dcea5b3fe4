#include "output/interface_writer.h"

#include <memory>
#include <sstream>

#include "model/address_list.h"
#include "model/registry.h"
#include "model/time.h"
#include "output/output_fixture.h"
#include "policy/rule.h"
#include "policy/rule_broadcast.h"
#include "screen/ferrowall.h"
#include "screen/interface.h"
#include "screen/interface_clk.h"
#include "services/service.h"
#include "services/services_fixture.h"
#include "services/state_engine_internal.h"

namespace {

// Addresses "dmz" and "far", engines tcp (forward only, one parameter) and
// udp (both paths) on internal routines 0 and 1, and a broadcast service.
class InterfaceWriterTest : public testing::Test {
 protected:
  void SetUp() override {
    Address::ResetUniqueId();
    FilterParams::ResetUniqueId();
    Rule::ResetUniqueId();
    Interface::ResetUniqueId();
    Time::ResetUniqueId();
    StateEngineInternal::ResetUniqueId();
    registry_.StateEngineInternals(*new StateEngineInternal("tcp_engine", 1));
    registry_.StateEngineInternals(*new StateEngineInternal("udp_engine", 1));
    tcp_ = AddEngine(new StateEngine("tcp", "tcp_engine", "port", 1, 1, 65535, 1, ints({0}), 1, 0));
    udp_ = AddEngine(new StateEngine("udp", "udp_engine", "port", 2, 1, 65535, 0, nullptr, 1, 1));
    registry_.Addresses(*address_of("dmz", {{"192.168.1.0", "192.168.1.255"}}).release());
    registry_.Addresses(*address_of("far", {{"172.16.0.0", "172.16.255.255"}}).release());
    netbios_ = ServiceOf("netbios", params_set(*udp_, {}, {{137, 138}}, 1));
  }

  StateEngine* AddEngine(StateEngine* engine) {
    registry_.StateEngines(*engine);
    std::ostringstream errors;
    EXPECT_EQ(engine->Resolve(CO_STATE_ENGINE, registry_.StateEngineInternals(), errors), 0);
    return engine;
  }

  Interface* AddInterface(const char* name, const char* protects, Interface_Type type, Log_Type log,
                          SNMP_Type snmp, ICMP_Type icmp) {
    Interface* interface = new Interface(name, protects, type, log, snmp, icmp, nullptr, nullptr, 0, nullptr);
    std::ostringstream errors;
    EXPECT_EQ(interface->Resolve(CO_ADDRESS, registry_.Addresses(), errors), 0) << errors.str();
    registry_.InterfaceList(type).Append(*interface);
    return interface;
  }

  std::unique_ptr<Service> ServiceOf(const char* name, FilterParams* set) {
    auto service = std::make_unique<Service>(name, nullptr, nullptr);
    service->Include(*set, 0);
    delete set;
    return service;
  }

  Registry registry_;
  Ferrowall screen_{"gate"};
  StateEngine* tcp_ = nullptr;
  StateEngine* udp_ = nullptr;
  std::unique_ptr<Service> netbios_;
  std::ostringstream interface_in_;
};

const char kHead[] =
    "#include \"SKIP_V1_TABLE\"\n"
    "#include \"Input.nat\"\n";
const char kEngines[] =
    "STATE_ENGINE\ttcp_engine\t0\n"
    "STATE_ENGINE\tudp_engine\t1\n";
const char kProgramEnd[] = "\t(void) default_fail();\n\thalt;\n}\n";

TEST_F(InterfaceWriterTest, InterfaceInWordsOfTheRoutingTypes) {
  Interface* gateway = AddInterface("r0", "dmz", INTERFACE_GWY, LOG_DETAIL, SNMP_NONE, ICMP_PORT_UNREACHABLE);
  Interface* ha = AddInterface("ha0", "far", INTERFACE_HA, LOG_SESSION, SNMP_TRAP, ICMP_HOST_FORBIDDEN);
  std::ostringstream out;
  InterfaceWriter::GenerateInterfaceIn(out, *gateway);
  InterfaceWriter::GenerateInterfaceIn(out, *ha);
  EXPECT_EQ(out.str(),
            "\"r0\" INTERFACE GWY \"dmz\" LOG_DETAIL SNMP_NONE ICMP_PORT_UNREACHABLE ;\n"
            "\"ha0\" INTERFACE HA \"far\" LOG_NONE SNMP ICMP_HOST_FORBIDDEN ;\n");
}

TEST_F(InterfaceWriterTest, StealthTableCarriesNetworkRoutersLocalhostAndEtherEntries) {
  TList<unsigned>* routers = new TList<unsigned>;
  routers->Append(*new unsigned(ip("10.5.0.1")));
  InterfaceCLK* stealth = new InterfaceCLK("clk0", "far", LOG_NONE, SNMP_NONE, ICMP_NONE, routers, nullptr, nullptr);
  std::ostringstream errors;
  ASSERT_EQ(stealth->Resolve(CO_ADDRESS, registry_.Addresses(), errors), 0);
  registry_.CLKInterfaces(*stealth);
  registry_.Localhost()->Include(Range(ip("127.0.0.1"), ip("127.0.0.1"), RT_ADDRESS, RS_ADDRESSES));
  simplerange network = {ip("10.5.0.0"), ip("10.5.0.255"), RS_PREFIX};
  FerrowallSettings settings;
  settings.stealth_network = &network;
  Ferrowall screen("bridge", settings);
  Engines engines;
  auto ether = ServiceOf("arp", params_set(engines.ether, {}, {{0x806, 0x806}}));
  auto address = address_of("all", {{"0.0.0.0", "255.255.255.255"}});
  for (Service* service : {netbios_.get(), ether.get()}) {
    Rule* rule = new Rule(*service, *address, *address, nullptr, nullptr, nullptr, nullptr, ACTION_ALLOW,
                          LOG_NONE, SNMP_NONE, ICMP_NONE, 0, nullptr, nullptr, nullptr, nullptr);
    rule->SetInterface(0);
    rule->SetInterface(2);
    stealth->EtherRules().Append(*rule);
  }
  ScratchDirectory directory;
  InterfaceWriter::GenerateOutput(interface_in_, *stealth, registry_, registry_.CLKInterfaces(), screen);
  EXPECT_EQ(interface_in_.str(), "\"clk0\" INTERFACE CLK \"far\" LOG_NONE SNMP_NONE ICMP_NONE ;\n");
  // The rule of the broadcast service is left out of the Ethernet entries.
  EXPECT_EQ(contents("clk0.data"),
            std::string(kHead) +
                "THIS_INTERFACE\taddr_0\n"
                "RANGE_LIST\taddr_0\t172.16.0.0 - 172.16.255.255\t\n"
                "OTHER_INTERFACES\taddr_1\n"
                "RANGE_LIST\taddr_1\t\n"
                "INTERFACE\t\"clk0\"\t0\tRANGE_LIST\t172.16.0.0 - 172.16.255.255\t\n" +
                kEngines +
                "ADDRESS\t10.5.0.0\n"
                "NETMASK\t255.255.255.0\n"
                "ROUTER\t10.5.0.1\n"
                "LOCALHOST\t127.0.0.1 - 127.0.0.1\t\n"
                "ETHER_ENTRY\t0x800005\tRANGE_LIST\tsvc_0\t2054 - 2054\n");
  EXPECT_EQ(contents("clk0.pfl"),
            std::string("#include \"pfldefs.h\"\n#include \"state_engines.h\"\n#include \"clk0.data.defs\"\n"
                        "screen()\n{\n\n") +
                kProgramEnd);
}

}  // namespace
