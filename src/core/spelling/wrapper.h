#pragma once

namespace tvx::browser {
class HTMLDocument;
}

namespace tvx::core {

/// The element that a text without any is put into while its words are walked over, and taken out of again.
/// In the journal it leaves no trace: what is changed meanwhile is one step, without the element.
class SpellingWrapper {
 public:
  explicit SpellingWrapper(browser::HTMLDocument& document) : document_(document) {}
  ~SpellingWrapper() { take_out(); }
  SpellingWrapper(const SpellingWrapper&) = delete;
  SpellingWrapper& operator=(const SpellingWrapper&) = delete;

  /// Only a body without an element gets one.
  void put_in();
  void take_out();
  /// Before a word is changed: from then on all is one step.
  void begin_change();
  bool stands() const { return stands_; }

 private:
  void wrap();
  void unwrap();

  browser::HTMLDocument& document_;
  bool stands_ = false, changing_ = false;
};

}  // namespace tvx::core
