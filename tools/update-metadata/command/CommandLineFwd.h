#pragma once

/// \file
/// Forward declarations of the argument parser for headers. Its own header takes seconds to
/// compile, so only the sources that call it include it.

namespace CLI {
class App;
class Option;
class Validator;
}  // namespace CLI
