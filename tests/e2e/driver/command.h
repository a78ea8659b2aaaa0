// The driver's commands: a name, how it is called, what it does. Each group of them is one table in a file of its own.
#pragma once
#include <span>
#include <string>
#include <vector>

#include "json.h"

using Arguments = std::vector<std::string>;

struct Command {
  const char* name;
  const char* usage;  // the arguments; those in brackets may be left out
  size_t least;
  void (*run)(const Arguments& arguments, Json& answer);  // puts exactly one value into the answer
};

std::span<const Command> lookCommands();
std::span<const Command> actCommands();
std::span<const Command> waitCommands();
std::span<const Command> registryCommands();
std::span<const Command> accessCommands();

// Argument number i, or the given value when there are fewer.
std::string optional(const Arguments& arguments, size_t i, const char* otherwise);
int number(const std::string& argument);  // throws Refused
