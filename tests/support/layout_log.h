// A layout that arranges nothing and writes down what it is asked for.
#pragma once

#include <nodeline/model/graph.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace nodeline::test {

// Lines are "make 3": the operation and the id of the owner. Several layouts may share a log; the
// name tells them apart, as in "inner make 3".
class LayoutLog : public ILayout {
public:
    using Lines = std::vector<std::string>;

    explicit LayoutLog(Lines& lines, std::string name = {})
        : lines_(lines), prefix_(name.empty() ? name : name + " ") {}

    void Make(Node owner) override { write("make", owner); }
    void Update(Node owner) override { write("update", owner); }
    void Resize(Node owner) override { write("resize", owner); }

    // Called after each line with the owner.
    std::function<void(Node)> then;

private:
    void write(const std::string& operation, const Node& owner) {
        lines_.push_back(prefix_ + operation + " " + std::to_string(owner.GetID()));
        if (then) then(owner);
    }

    Lines& lines_;
    std::string prefix_;
};

inline std::string Line(const std::string& operation, const Node& owner) {
    return operation + " " + std::to_string(owner.GetID());
}

}  // namespace nodeline::test
