#pragma once

/// \file
/// The names of the argument parser that headers of the command need. Its own header takes seconds
/// to compile, so only the sources that call it include it.

namespace CLI {
class App;
class Option;
class Validator;
}  // namespace CLI
