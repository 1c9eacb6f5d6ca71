#pragma once

#include <functional>

namespace corma::testing {

/// How a child process ended.
struct ChildEnd
{
    int signal = 0; // that ended it; 0 for none
    int status = 0; // that it ended with itself

    /// What it was asked was true.
    [[nodiscard]] bool isGood() const { return signal == 0 && status == 0; }

    [[nodiscard]] bool wasKilled() const;
};

/// A child process that does one thing, which is a copy of this process at the moment of the
/// making. It ends without the ends of its objects, so that it takes nothing of the test with it.
/// The thing must not use assertions: what is true or not is for the parent to tell.
class Child
{
public:
    explicit Child(const std::function<bool()>& thing);
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child(); ///< kills it if nobody waited for it

    void kill();

    /// Waits for its end. A thing that was false ends with status 1, one that threw with 2.
    ChildEnd end();

private:
    int m_process;
};

/// The end of a child that does one thing.
ChildEnd inChild(const std::function<bool()>& thing);

/// The same for a child that has no rights but those of anyone: it gives up those of root.
ChildEnd inChildWithoutRights(const std::function<bool()>& thing);

} // namespace corma::testing
