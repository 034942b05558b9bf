#pragma once

#include "runtime/VeldrinApi.h"

#include <algorithm>
#include <exception>
#include <vector>

namespace veldrin {

// Says on the command line that a reactor has thrown; nullptr for what is no std::exception.
VELDRIN_API void reportReactorFailure(const std::exception* failure);

// Reactors in the order in which they came; not owned. A reactor may add and remove reactors, itself
// included, while it is told: one that is gone hears nothing more, one that is new hears from the next
// notification on. One that throws does not keep the news from the others.
template<class Reactor>
class ReactorList {
public:
    void add(Reactor* reactor) {
        if (reactor && !holds(reactor)) m_reactors.push_back(reactor);
    }
    void remove(Reactor* reactor) { std::erase(m_reactors, reactor); }
    bool isEmpty() const { return m_reactors.empty(); }

    template<class... Parameters, class... Arguments>
    void tell(void (Reactor::*notification)(Parameters...), Arguments... arguments) const {
        const std::vector<Reactor*> reactors = m_reactors;
        for (Reactor* reactor : reactors) {
            if (!holds(reactor)) continue;
            try {
                (reactor->*notification)(arguments...);
            } catch (const std::exception& failure) {
                reportReactorFailure(&failure);
            } catch (...) {
                reportReactorFailure(nullptr);
            }
        }
    }

private:
    bool holds(const Reactor* reactor) const {
        return std::find(m_reactors.begin(), m_reactors.end(), reactor) != m_reactors.end();
    }

    std::vector<Reactor*> m_reactors;
};

} // namespace veldrin
