// Saved and listing text of services, filters and state engines.
#include <gtest/gtest.h>

#include <sstream>

#include "services/service.h"
#include "services/services_fixture.h"

namespace {

template <class T>
std::string printed(const T& object) {
  std::ostringstream out;
  object.Print(out);
  return out.str();
}

std::string listed(const Entity& object, Enumerate_Type type) {
  std::ostringstream out;
  object.Enumerate(out, type);
  return out.str();
}

TList<Filter>* one_filter(const char* engine, std::initializer_list<Discriminator*> discriminators) {
  TList<Discriminator>* list = new TList<Discriminator>;
  for (Discriminator* discriminator : discriminators) list->Append(*discriminator);
  TList<Filter>* filters = new TList<Filter>;
  filters->Append(*new Filter(engine, list));
  return filters;
}

TEST(ServiceTextTest, SingleService) {
  Service web("web", one_filter("tcp", {new Discriminator(80, 80, 0, nullptr, 0),
                                        new Discriminator(1, 5, 0, ints({1, 2}), -1)}),
              one_filter("udp", {new Discriminator(0, 0, 1, nullptr, 0)}), "north", "www");
  EXPECT_EQ(printed(web),
            "\"web\"\tSERVICE\ttcp\t80 1 - 5\tBROADCAST\tPARAMS\t( 1 2  ) "
            " REVERSE \tudp\t *  \tSCREEN\t\"north\"\tCOMMENT\t\"www\"");
  EXPECT_EQ(listed(web, ENUM_FULL),
            "SCREEN \"north\" \"web\" SINGLE FORWARD \"tcp\" PORT 80 BROADCAST 1 - 5 PARAMETERS  1 2"
            " REVERSE \"udp\" PORT * COMMENT \"www\"\n");
  EXPECT_EQ(listed(web, ENUM_NAME), "\"web\" SINGLE\n");
}

TEST(ServiceTextTest, GroupsAndTheBuiltInService) {
  TList<Entity>* members = new TList<Entity>;
  members->Append(*new Entity("a", nullptr, nullptr, 0));
  members->Append(*new Entity("b", nullptr, nullptr, 0));
  Service group("g", members, nullptr, nullptr);
  EXPECT_EQ(printed(group), "\"g\"\tSERVICE_GROUP\t\"a\"\t\"b\"");
  EXPECT_EQ(listed(group, ENUM_FULL), "\"g\" GROUP \"a\" \"b\"\n");
  Service all("*", one_filter("tcp", {}), nullptr, nullptr, "everything");
  EXPECT_EQ(listed(all, ENUM_FULL), "\"*\" GROUP\n");
}

TEST(ServiceTextTest, StateEngines) {
  StateEngine engine("tcp", "tcp_engine", "port", 1, 2, 65535, 2, ints({0, 7}), 1, 1);
  EXPECT_EQ(printed(engine), "\"tcp\"\tSTATE_ENGINE\t\"tcp_engine\" \"port\"\tFORWARD\tREVERSE\t1\t2\t0xffff\t2\t0 7 ");
  EXPECT_EQ(listed(engine, ENUM_FULL), "\"tcp\"  port 2\n");
  StateEngine reverse_only("r", "i", "l", 0, 0, 0, 0, nullptr, 0, 1);
  EXPECT_EQ(printed(reverse_only), "\"r\"\tSTATE_ENGINE\t\"i\" \"l\"\tREVERSE\t0\t0\t0x0\t0\t");
  StateEngineInternal internal("tcp_engine", 0);
  EXPECT_EQ(printed(internal), "\"tcp_engine\"\tSTATE_ENGINE");
  EXPECT_EQ(listed(internal, ENUM_NAME), "\"tcp_engine\" \n");
}

}  // namespace
