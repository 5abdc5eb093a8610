#include "common/line_commands.h"

#include <cstdint>
#include <optional>
#include <sstream>

#include "common/errors.h"
#include "common/interruption.h"
#include "common/joined.h"
#include "common/nearest.h"

namespace varnix::cli {

namespace {

/// At most that many words. The last one is the rest of the line, with the blanks inside it.
Words split(const std::string& line, std::size_t limit = SIZE_MAX) {
  std::istringstream stream(line);
  Words words;
  for (std::string word; words.size() + 1 < limit && stream >> word;) words.push_back(word);
  std::string rest;
  if (std::getline(stream >> std::ws, rest) && !rest.empty())
    words.push_back(rest.substr(0, rest.find_last_not_of(" \t\r") + 1));
  return words;
}

bool isFree(const std::string& word) { return word[0] >= 'A' && word[0] <= 'Z'; }

/// The free words, or nothing if the line does not have that form.
std::optional<Words> match(const std::string& text, const std::string& lineText) {
  const Words form = split(text);
  const Words line = split(lineText, form.size());
  if (form.size() != line.size()) return {};
  Words free;
  for (std::size_t i = 0; i < form.size(); ++i) {
    if (isFree(form[i])) free.push_back(line[i]);
    else if (form[i] != line[i]) return {};
  }
  return free;
}

[[noreturn]] void refuse(std::span<const char* const> known, const Words& words) {
  const std::string line = joined(words);
  std::string forms;
  for (const char* form : known) {
    if (split(form)[0] == words[0]) forms.append(forms.empty() ? "expected " : " or ").append(form);
  }
  if (!forms.empty()) throw Failure(forms, line);
  Words first;
  for (const char* form : known) first.push_back(split(form)[0]);
  throw Failure("no such command", line + didYouMean(words[0], first));
}

}  // namespace

void runLine(std::span<const char* const> forms, const std::string& line,
             const std::function<void(std::size_t form, const Words& arguments)>& run) {
  const Words words = split(line);
  if (words.empty() || words[0][0] == '#') return;
  for (std::size_t i = 0; i < forms.size(); ++i) {
    if (const auto arguments = match(forms[i], line)) return run(i, *arguments);
  }
  refuse(forms, words);
}

void runLines(const LineSource& source, const std::function<void(const std::string& line)>& run) {
  LineReader reader(source);
  const std::string name = source.file == "-" ? "standard input" : source.file;
  std::string line;
  for (int number = 1;; ++number) {
    try {
      if (!reader.next(line)) return;
      run(line);
    } catch (const Interrupted&) {
      throw;
    } catch (const std::exception& error) {
      throw Failure(name + " line " + std::to_string(number), error.what());
    }
  }
}

std::string formList(std::span<const char* const> forms) {
  std::string text;
  for (const char* form : forms) text.append("  ").append(form).append("\n");
  return text;
}

}  // namespace varnix::cli
