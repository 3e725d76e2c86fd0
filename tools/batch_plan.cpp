#include "batch_plan.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <system_error>

#include "destination.h"
#include "io_error.h"

namespace brum::tools {

namespace {

namespace fs = std::filesystem;

/// An input and what its output is to be called in the output folder.
struct InputFile {
  fs::path path;
  fs::path name;
};

const char* extension_of(Form form) {
  switch (form) {
    case Form::v1:
      return ".smt";
    case Form::dot:
      return ".dot";
    case Form::v2:
    case Form::define_fun:
    case Form::terms:
    case Form::trace:
      break;
  }
  return ".smt2";
}

std::vector<InputFile> files_below(const fs::path& folder, const fs::path& output_folder) {
  std::vector<InputFile> files;
  fs::path at = folder;
  try {
    for (fs::recursive_directory_iterator entry(folder), end; entry != end; ++entry) {
      at = entry->path();
      if (entry->is_directory() && resolved(at) == output_folder) {
        entry.disable_recursion_pending();
      }
      const bool is_input = at.extension() == ".smt2" || at.extension() == ".smt";
      if (is_input && entry->is_regular_file()) {
        files.push_back({at, at.lexically_relative(folder)});
      }
    }
  } catch (const fs::filesystem_error& problem) {
    throw IoError("cannot read " + at.string() + ": " + problem.code().message());
  }
  std::sort(files.begin(), files.end(),
            [](const InputFile& a, const InputFile& b) { return a.path < b.path; });
  return files;
}

std::vector<InputFile> input_files(const CommandLine& line) {
  const fs::path output_folder = resolved(line.output_folder);
  std::vector<InputFile> files;
  for (const std::string& input : line.inputs) {
    const fs::path path = input;
    std::error_code ignored;
    if (!fs::is_directory(path, ignored)) {
      files.push_back({path, path.filename()});
      continue;
    }
    const std::vector<InputFile> below = files_below(path, output_folder);
    if (below.empty()) {
      throw BadBatch("no .smt2 or .smt file in the folder " + input);
    }
    files.insert(files.end(), below.begin(), below.end());
  }
  return files;
}

}  // namespace

std::vector<CommandLine> plan_batch(const CommandLine& line) {
  const std::vector<InputFile> files = input_files(line);
  std::set<fs::path> inputs;
  for (const InputFile& file : files) {
    inputs.insert(resolved(file.path));
  }
  std::map<fs::path, std::string> input_of_output;
  std::vector<CommandLine> plan;
  for (const InputFile& file : files) {
    CommandLine one = line;
    one.inputs.clear();
    one.input = file.path.string();
    const fs::path output = fs::path(line.output_folder) /
                            fs::path(file.name).replace_extension(extension_of(line.form));
    one.output = output.string();
    const fs::path place = resolved(output);
    if (inputs.contains(place)) {
      throw BadBatch("writing " + one.output + " would replace an input");
    }
    const auto [first, is_new] = input_of_output.emplace(place, one.input);
    if (!is_new) {
      throw BadBatch(first->second + " and " + one.input + " would both be written to " +
                     one.output);
    }
    plan.push_back(std::move(one));
  }
  return plan;
}

}  // namespace brum::tools
