#pragma once

#include <optional>
#include <string>

#include "tests/support/memory_source_control.h"

namespace gorbex::test {

/// A source-control database in memory.
struct MemorySourceControlBench {
  Journal journal;
  MemorySourceControl client{journal};
  std::string work = "C:\\Work";

  MemorySourceControlBench() { Publish("top.txt", "top\n"); }
  void Open() { client.Open("C:\\scc.ini", "anna", ""); }
  MemorySourceControl::Sides& Of(const std::string& name) { return client.files["$/" + name]; }
  void Publish(const std::string& name, const std::string& text) { Of(name).database = text; }
  void Locally(const std::string& name, const std::optional<std::string>& text) {
    Of(name).working = text;
  }
  std::string Local(const std::string& name) { return Of(name).working.value_or(""); }
  std::string Database(const std::string& name) { return *Of(name).database; }
  bool HasLabel(const std::string& label) { return client.labels.contains(label); }
};

}  // namespace gorbex::test
