#pragma once

#include <QString>

#include <map>
#include <string>
#include <vector>

namespace keldrin {

/// A text that can have a letter which reaches its control together with Alt.
struct MnemonicText {
    int id = 0;
    std::string text;     ///< "&" marks the letter that the program wants
    bool first = false;   ///< chooses its letter before those that are not
    bool literal = false; ///< a "&" in the text is one to be seen
};

/// The letters of one dialog. No two texts have the same; a text whose letters are all taken has
/// none.
class Mnemonics {
  public:
    Mnemonics() = default;
    explicit Mnemonics(const std::vector<MnemonicText> &texts);

    /// The text with "&" before its letter, also after the text has changed.
    /// literal  a "&" in the text is one to be seen, and does not mark a letter
    [[nodiscard]] QString marked(int id, const std::string &text, bool literal) const;

  private:
    std::map<int, QChar> letters_; ///< upper case
};

} // namespace keldrin
