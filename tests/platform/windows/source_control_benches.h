#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "automation_servers.h"
#include "platform/windows/file_system.h"
#include "platform/windows/source_control.h"
#include "platform/windows/tool.h"
#include "tests/platform/memory_source_control_bench.h"

namespace gorbex::test {

/// A SourceSafe database over a folder.
struct SourceSafeBench {
  AutomationServers servers;
  WindowsFileSystem files;
  WindowsToolRunner tools;
  WindowsSourceControl client{tools, files, ""};
  std::string folder = WindowsPath(servers.root.Path());
  std::string work = folder + "\\work";

  SourceSafeBench() {
    servers.root.Put("srcsafe.ini", "Data_Path = data\r\n");
    Publish("top.txt", "top\n");
  }
  void Open() { client.Open(folder + "\\srcsafe.ini", "anna", "s3cr\xE9t"); }
  void Publish(const std::string& name, const std::string& text) const {
    servers.root.Put("database/" + name, text);
  }
  void Locally(const std::string& name, const std::optional<std::string>& text) const {
    std::filesystem::remove(servers.root.Path() / "work" / name);
    if (text) servers.root.Put("work/" + name, *text);
  }
  std::string Local(const std::string& name) const { return servers.root.Get("work/" + name); }
  std::string Database(const std::string& name) const {
    return servers.root.Get("database/" + name);
  }
  bool HasLabel(const std::string& label) const {
    return std::filesystem::exists(servers.root.Path() / "labels" / label);
  }
};

using SourceControlBenches = testing::Types<MemorySourceControlBench, SourceSafeBench>;

}  // namespace gorbex::test
