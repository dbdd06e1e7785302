#pragma once

#include <string>
#include <vector>

#include "platform/file_system.h"
#include "platform/registry.h"
#include "platform/runtime_error.h"
#include "tests/faults/fault_plan.h"

namespace gorbex::test {

/// Another file system, one operation of which fails and changes nothing.
class FaultyFiles : public FileSystem {
 public:
  FaultyFiles(FileSystem& inner, FaultPlan& plan, ErrorNumber error)
      : inner_(inner), plan_(plan), error_(error) {}

  [[nodiscard]] std::optional<FileInfo> Look(const std::string& path) const override {
    return plan_.Strikes() ? std::nullopt : inner_.Look(path);
  }
  [[nodiscard]] std::string Read(const std::string& path) const override {
    Fail(path);
    return inner_.Read(path);
  }
  [[nodiscard]] std::vector<FolderEntry> List(const std::string& folder) const override {
    Fail(folder);
    return inner_.List(folder);
  }
  void Write(const std::string& path, const std::string& bytes) override {
    Fail(path);
    inner_.Write(path, bytes);
  }
  void Append(const std::string& path, const std::string& bytes) override {
    Fail(path);
    inner_.Append(path, bytes);
  }
  void Remove(const std::string& path) override {
    Fail(path);
    inner_.Remove(path);
  }
  void SetAttributes(const std::string& path, std::uint32_t attributes) override {
    Fail(path);
    inner_.SetAttributes(path, attributes);
  }
  void CreateFolder(const std::string& path) override {
    Fail(path);
    inner_.CreateFolder(path);
  }

 private:
  void Fail(const std::string& path) const {
    if (plan_.Strikes()) throw RuntimeError(error_, path);
  }

  FileSystem& inner_;
  FaultPlan& plan_;
  ErrorNumber error_;
};

/// Another registry, one operation of which the system refuses.
class FaultyRegistry : public Registry {
 public:
  FaultyRegistry(Registry& inner, FaultPlan& plan) : inner_(inner), plan_(plan) {}

  [[nodiscard]] bool HasKey(RegistryRoot root, std::string_view subKey) const override {
    return !plan_.Strikes() && inner_.HasKey(root, subKey);
  }
  [[nodiscard]] std::optional<RegistryValue> Value(RegistryRoot root, std::string_view subKey,
                                                   std::string_view name) const override {
    return plan_.Strikes() ? std::nullopt : inner_.Value(root, subKey, name);
  }
  bool CreateKey(RegistryRoot root, std::string_view subKey) override {
    return !plan_.Strikes() && inner_.CreateKey(root, subKey);
  }
  bool SetValue(RegistryRoot root, std::string_view subKey, std::string_view name,
                const RegistryValue& value) override {
    return !plan_.Strikes() && inner_.SetValue(root, subKey, name, value);
  }

 private:
  Registry& inner_;
  FaultPlan& plan_;
};

}  // namespace gorbex::test
