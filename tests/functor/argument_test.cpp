#include <gtest/gtest.h>
#include <nodeline/functor/signal.h>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace nodeline::test {
namespace {

using corvex::_internal::dummy_t;
using corvex::_internal::signal_base_t;
using corvex::_internal::signal_templ;

static_assert(std::is_base_of_v<signal_templ<dummy_t, dummy_t, int, char>, signal_t<int, char>>);
static_assert(std::is_base_of_v<signal_base_t, signal_templ<dummy_t, dummy_t, int, char>>);
static_assert(std::is_base_of_v<subscriber_base_t, signal_base_t>);
static_assert(sizeof(signal_t<int>) == sizeof(signal_base_t), "the types add no data");
static_assert(std::is_invocable_r_v<void, const signal_t<>&>);
static_assert(!std::is_invocable_v<const signal_t<>&, int>);
static_assert(std::is_invocable_v<const signal_t<int&>&, int&>);
static_assert(!std::is_invocable_v<const signal_t<int&>&, int>);

// A header may declare a signal of types that it knows by their names alone.
struct Event;
struct Source {
    signal_t<Source&, Event> OnEvent;
};
struct Event {
    int number = 0;
};

struct Receiver : subscriber_base_t {
    void None() { calls.push_back("none"); }
    void One(int a) { Note({a}); }
    void Two(int a, int b) { Note({a, b}); }
    void Three(int a, int b, int c) { Note({a, b, c}); }
    void Four(int a, int b, int c, int d) { Note({a, b, c, d}); }
    void Five(int a, int b, int c, int d, int e) { Note({a, b, c, d, e}); }
    void Six(int a, int b, int c, int d, int e, int f) { Note({a, b, c, d, e, f}); }

    void Note(const std::vector<int>& numbers) {
        std::string call;
        for (const int number : numbers) {
            call += std::to_string(number);
        }
        calls.push_back(call);
    }

    std::vector<std::string> calls;
};

TEST(SignalArguments, ZeroToSixArriveInOrder) {
    Receiver receiver;
    signal_t<> none;
    signal_t<int> one;
    signal_t<int, int> two;
    signal_t<int, int, int> three;
    signal_t<int, int, int, int> four;
    signal_t<int, int, int, int, int> five;
    signal_t<int, int, int, int, int, int> six;
    none.connect(&receiver, &Receiver::None);
    one.connect(&receiver, &Receiver::One);
    two.connect(&receiver, &Receiver::Two);
    three.connect(&receiver, &Receiver::Three);
    four.connect(&receiver, &Receiver::Four);
    five.connect(&receiver, &Receiver::Five);
    six.connect(&receiver, &Receiver::Six);
    none();
    one(1);
    two(1, 2);
    three(1, 2, 3);
    four(1, 2, 3, 4);
    five(1, 2, 3, 4, 5);
    six(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(receiver.calls,
              (std::vector<std::string>{"none", "1", "12", "123", "1234", "12345", "123456"}));
}

struct Handler : subscriber_base_t {
    void Handle(Source& from, Event event) {
        source = &from;
        number = event.number;
    }
    Source* source = nullptr;
    int number = 0;
};

TEST(SignalArguments, TypesMayBeCompletedAfterTheSignalIsDeclared) {
    Handler handler;
    Source source;
    source.OnEvent.connect(&handler, &Handler::Handle);
    source.OnEvent(source, Event{5});
    EXPECT_EQ(handler.source, &source);
    EXPECT_EQ(handler.number, 5);
}

struct Node {
    int marks = 0;
};

struct Marker : subscriber_base_t {
    void Mark(Node& node) {
        last = &node;
        seen = node.marks++;
    }
    Node* last = nullptr;
    int seen = -1;
};

TEST(SignalArguments, ReferenceIsTheEmittersOwnAndShowsWhatTheSlotBeforeChanged) {
    Marker first;
    Marker second;
    signal_t<Node&> signal;
    signal.connect(&first, &Marker::Mark);
    signal.connect(&second, &Marker::Mark);
    Node node;
    signal(node);
    EXPECT_EQ(first.last, &node);
    EXPECT_EQ(second.last, &node);
    EXPECT_EQ(first.seen, 0);
    EXPECT_EQ(second.seen, 1);
    EXPECT_EQ(node.marks, 2);
}

struct Spoiler : subscriber_base_t {
    void Take(std::string text) { Spoil(text); }
    void Spoil(std::string& text) {
        seen = text;
        text = "spoiled";
    }
    void TakeFirst(std::string text, std::string& out) {
        seen = std::move(text);
        out += seen;
    }
    std::string seen;
};

TEST(SignalArguments, ValueIsCopiedAnewForEachSlot) {
    Spoiler first;
    Spoiler second;
    signal_t<std::string> signal;
    signal.connect(&first, &Spoiler::Take);
    signal.connect(&second, &Spoiler::Take);
    std::string text = "long enough to live on the heap";
    signal(text);
    EXPECT_EQ(first.seen, "long enough to live on the heap");
    EXPECT_EQ(second.seen, "long enough to live on the heap");
    EXPECT_EQ(text, "long enough to live on the heap");
}

TEST(SignalArguments, ValuesAndReferencesMayBeMixed) {
    Spoiler first;
    Spoiler second;
    signal_t<std::string, std::string&> signal;
    signal.connect(&first, &Spoiler::TakeFirst);
    signal.connect(&second, &Spoiler::TakeFirst);
    std::string out;
    signal("ab", out);
    EXPECT_EQ(out, "abab");
}

struct Counted {
    Counted() = default;
    Counted(const Counted& other) : copies(other.copies) { ++*copies; }
    Counted(Counted&&) noexcept = default;
    Counted& operator=(const Counted&) = delete;
    Counted& operator=(Counted&&) = delete;
    ~Counted() = default;

    int* copies = nullptr;
};

struct CountedReceiver : subscriber_base_t {
    void Take(Counted) {}
    void Look(const Counted&) {}
};

TEST(SignalArguments, ValueIsCopiedOncePerSlot) {
    int copies = 0;
    Counted counted;
    counted.copies = &copies;
    CountedReceiver receiver;
    signal_t<Counted> signal;
    signal.connect(&receiver, &CountedReceiver::Take);
    signal.connect(&receiver, &CountedReceiver::Look);
    signal(std::move(counted));
    EXPECT_EQ(copies, 2);
}

TEST(SignalArguments, ConstReferenceIsNotCopied) {
    int copies = 0;
    Counted counted;
    counted.copies = &copies;
    CountedReceiver receiver;
    signal_t<const Counted&> signal;
    signal.connect(&receiver, &CountedReceiver::Look);
    signal(counted);
    EXPECT_EQ(copies, 0);
}

enum class Button { None = 0, Left = 1 };

struct Surface : subscriber_base_t {
    void Press(Surface* element, double x, double y, Button button) {
        target = element;
        sum = x + y;
        pressed = button;
    }
    Surface* target = nullptr;
    double sum = 0.0;
    Button pressed = Button::None;
};

TEST(SignalArguments, PointersNumbersAndEnumeratorsPassAsTheyAre) {
    Surface surface;
    signal_t<Surface*, double, double, Button> signal;
    signal.connect(&surface, &Surface::Press);
    signal(&surface, 1.5, 2, Button::Left);
    EXPECT_EQ(surface.target, &surface);
    EXPECT_EQ(surface.sum, 3.5);
    EXPECT_EQ(surface.pressed, Button::Left);
}

struct Text : subscriber_base_t {
    void Show(const std::string& text) { shown += text; }
    std::string shown;
};

TEST(SignalArguments, EmitterMayPassWhatConvertsToTheArgument) {
    Text text;
    signal_t<std::string> signal;
    signal.connect(&text, &Text::Show);
    signal("literal");
    EXPECT_EQ(text.shown, "literal");
}

}  // namespace
}  // namespace nodeline::test
