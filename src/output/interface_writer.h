// InterfaceWriter writes the files of one interface: its line of
// Interface.in, its part of SKIP_V1_TABLE, and, unless it is disabled, its
// table ("<name>.data") and filter program ("<name>.pfl").  A reverse
// interface is written under the name of the real interface it stands in
// for, with ".rev" in the file names.  Files are made in the current
// directory.
#ifndef FW_OUTPUT_INTERFACE_WRITER_H
#define FW_OUTPUT_INTERFACE_WRITER_H

#include <ostream>
#include <string>
#include <vector>

#include "model/t_list.h"

class Address;
class Entity;
class Ferrowall;
class Interface;
class InterfaceCLK;
class Registry;

class InterfaceWriter {
 public:
  // The part of a reverse interface's files that is the same whichever
  // interface it stands in for: each rule's table lines and the program
  // after its head, with the objects that writing them marked.  The first
  // file pair of a family makes it, the others copy it.
  struct ReverseBody {
    bool made = false;
    std::string table;
    std::string program;
    std::vector<Entity*> marked;
  };

  // Interface::GenerateOutput.  `list` is the interface's family.  The
  // registry's marks are cleared first, so each table gets the lines of
  // every service it uses.
  static void GenerateOutput(std::ostream& interface_in, Interface& interface, Registry& registry,
                             const TList<Entity>& list, const Ferrowall& screen);
  // The files of the family's reverse interface, named after `reverse_of`.
  static void GenerateReverseOutput(Interface& reverse, Interface& reverse_of, Registry& registry,
                                    const TList<Entity>& list, ReverseBody& body);
  // Interface::GenerateDataFile: the head of the table, up to the internal
  // state engines.
  static void GenerateDataFile(std::ostream& table, Interface& interface, const TList<Entity>& list,
                               const Registry& registry, Interface* reverse_of);
  // Interface::GeneratePFLFile: the program of a real interface, and each
  // rule's lines in the table, in the order of the interface's rule list.
  static void GeneratePFLFile(std::ostream& table, std::ostream& program, const Interface& interface);
  // The two parts of GeneratePFLFile.
  static void GeneratePFLHead(std::ostream& program, const Interface& interface, bool reverse);
  static void GeneratePFLBody(std::ostream& table, std::ostream& program, const Interface& interface);
  // Interface::GenerateSkipV1Table: the key pairs of rules with SKIP
  // version 1 parameters.
  static void GenerateSkipV1Table(std::ostream& out, const Interface& interface);
  // Interface::GenerateInterfaceIn: the interface statement Interface.in
  // holds.
  static std::ostream& GenerateInterfaceIn(std::ostream& out, const Interface& interface);
  // InterfaceCLK::GenerateEtherOutput: the Ethernet entries of `rules`.
  static void GenerateEtherOutput(std::ostream& table, const TList<Entity>& rules);
  // "<name>", ".rev" when `reverse`, then `ending`.
  static std::string FileName(const Interface& interface, bool reverse, const char* ending);

 private:
  // InterfaceCLK::GenerateOutput: a stealth interface's table carries its
  // stealth network, its routers and the local addresses, and its Ethernet
  // entries after the rules.
  static void GenerateStealthOutput(std::ostream& interface_in, InterfaceCLK& interface,
                                    Registry& registry, const TList<Entity>& list,
                                    const Ferrowall& screen);
  // "<head>\taddr_<n>" and the address line of `address`.
  static void AddressEntry(std::ostream& table, const char* head, Address& address);
  // The row of one family member in the table's interface list.
  static void InterfaceRow(std::ostream& table, Interface& member, bool own_reverse_row);
  // The program file beside `table`.
  static void WriteProgram(std::ostream& table, const Interface& interface);
  static void MakeReverseBody(const Interface& reverse, const Registry& registry, ReverseBody& body);
};

#endif
