// A list of reactors that may change while it is being called.
#pragma once

#include <algorithm>
#include <vector>

namespace host {

// Calls reactors in the order of their addition. One that is removed during a call is skipped, one
// that is added is called from the next event on.
template <class Reactor>
class ReactorList {
public:
    void Add(Reactor* reactor) {  // null and a second time change nothing
        if (reactor != nullptr && !Has(reactor)) m_reactors.push_back(reactor);
    }
    void Remove(Reactor* reactor) {  // harmless for one that is not there
        m_reactors.erase(std::remove(m_reactors.begin(), m_reactors.end(), reactor),
                         m_reactors.end());
    }
    // Calls call(reactor) for each that is there now and still is when its turn comes.
    template <class Call>
    void Notify(Call call) {
        const std::vector<Reactor*> present = m_reactors;
        for (Reactor* reactor : present)
            if (Has(reactor)) call(*reactor);
    }

private:
    bool Has(const Reactor* reactor) const {
        return std::find(m_reactors.begin(), m_reactors.end(), reactor) != m_reactors.end();
    }
    std::vector<Reactor*> m_reactors;  // not owned
};

}  // namespace host
