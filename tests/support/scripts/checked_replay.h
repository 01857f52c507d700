// A replay that looks at every picture on its way.
#pragma once

#include <apps/cli/replay/commands.h>
#include <support/picture_moves.h>
#include <support/scripts/script.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace nodeline::test {

// The first line of a script for the layout that is tested.
inline constexpr const char* kLayoutLine = "layout stable";

// Carries out a script line by line, with that layout unless the script names another. After each
// recalculation that had work, the picture must keep the rules of `FindFaults`, and what was there
// before may only have moved as `FindWrongMoves` allows. It must be the same to the bit after
// requests without a change, once sizes have been measured, and after nodes were hidden and shown
// again with nothing in between.
class CheckedReplay {
public:
    CheckedReplay();

    // Whether the line could be carried out; nothing has happened if not.
    bool Run(const std::string& line);

    [[nodiscard]] replay::Session& session() { return session_; }
    // How often there was work.
    [[nodiscard]] int recalculations() const { return recalculations_; }
    // How many pictures had to be the same as one before, to the bit.
    [[nodiscard]] int comparisons() const { return comparisons_; }
    // What the last recalculation did wrong, a line each; empty if nothing.
    [[nodiscard]] const std::string& faults() const { return faults_; }

private:
    // What has happened since the last recalculation.
    struct Block {
        bool measures_all = false;
        bool makes_all = false;
        bool has_changes = false;
        std::set<int> made_ids;
        // The only line that hid or showed something; empty if there is none.
        std::string toggle;
        bool is_plain_toggle = false;
    };
    // A picture, what was hidden in it since, and the line that would show that again.
    struct Hiding {
        std::string picture;
        std::string reversal;
    };

    void Note(const replay::Words& words);
    void NoteToggle(const replay::Words& words);
    [[nodiscard]] bool ShowsWhatFolds(const replay::Words& words);
    void Look();
    void LookAtBits(const std::string& picture);
    void Expect(const std::string& picture, const std::string& wanted, const char* what);

    replay::Session session_;
    Block block_;
    std::vector<PlacedNode> places_;
    std::string picture_;
    std::optional<Hiding> hiding_;
    bool is_measured_ = false;
    int recalculations_ = 0;
    int comparisons_ = 0;
    std::string faults_;
};

// A judge: the first faults of a checked replay of the script, with the line that brought them.
[[nodiscard]] std::string FaultsOf(const Script& script);

// Writes a script and the picture at its end into the folder for files of tests. The answer names
// both files.
[[nodiscard]] std::string SaveWithPicture(const Script& script, const std::string& name);

// For the message of a test that fails: the fault, and the files with the smallest script that
// fails as well.
[[nodiscard]] std::string Explain(const Script& script, const std::string& name,
                                  const Judge& judge = FaultsOf);

}  // namespace nodeline::test
