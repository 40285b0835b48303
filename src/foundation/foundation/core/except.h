// SPDX-License-Identifier: MIT

#pragma once

#include <exception>
#include <memory>
#include <string>
#include <utility>

#include "foundation/core/export.h"

namespace foundation::core::except {

/// Identifies the message that an exception carries.
///
/// It does not derive from std::exception, so an exception that derives from both is caught as
/// `const std::exception&` without ambiguity.
class FOUNDATION_EXPORT IMsgIDException {
 public:
  virtual ~IMsgIDException();

  /// The message catalogue and the key in it, joined by a colon. Static text.
  virtual const char* getMessageId() const noexcept = 0;

  /// The same English text as what() of std::exception.
  virtual const char* what() const noexcept = 0;

 protected:
  IMsgIDException() = default;

  /// Copied only by derived classes.
  IMsgIDException(const IMsgIDException&) = default;

  /// Like copying.
  IMsgIDException& operator=(const IMsgIDException&) = default;
};

/// An exception that carries one message.
///
/// `Message` provides `static constexpr const char* kId` and `std::string text() const`. Copies
/// share the message: copying throws nothing and allocates nothing.
template <class Message>
class FOUNDATION_EXPORT Exception : public std::exception, public IMsgIDException {
 public:
  /// Takes ownership of the message and composes its text, once. \throws std::bad_alloc
  explicit Exception(Message message)
      : content_(std::make_shared<const Content>(Content{message.text(), std::move(message)})) {}

  /// Moving copies, so that no exception is ever without its message.
  Exception(const Exception&) noexcept = default;

  /// Like copying.
  Exception& operator=(const Exception&) noexcept = default;

  /// The message with its arguments. It lives as long as any copy of the exception.
  const Message& message() const noexcept { return content_->message; }

  const char* getMessageId() const noexcept override { return Message::kId; }
  const char* what() const noexcept override { return content_->text.c_str(); }

 private:
  struct Content {
    std::string text;
    Message message;
  };

  std::shared_ptr<const Content> content_;
};

}  // namespace foundation::core::except
