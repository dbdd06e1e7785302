#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace gorbex::cli {

/// One project of a pipeline; texts are UTF-8.
struct PipelineJob {
  std::string name;                  ///< unique
  std::string project;               ///< its Windows path
  std::string binary;                ///< what it builds, as a Windows path
  std::string artifact;              ///< the same file in the repository
  std::string result;                ///< where its build writes the result, as a Windows path
  std::string resultArtifact;        ///< the same file in the repository
  std::vector<std::size_t> needs{};  ///< all jobs whose components it uses
};

/// A pipeline for GitLab, with a job for each project and a last one that joins the results.
struct GitLabPipeline {
  std::string buildProject;  ///< its Windows path
  std::string folder;        ///< the build project's folder in the repository, "" or with "/"
  std::vector<PipelineJob> jobs;
  std::vector<std::string> before;  ///< commands that every job begins with
  std::vector<std::string> tags;    ///< of the runners
  std::string image;                ///< of the containers; empty for none

  /// The pipeline as YAML.
  [[nodiscard]] std::string Text() const;
};

}  // namespace gorbex::cli
