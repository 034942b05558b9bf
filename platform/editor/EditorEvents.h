#pragma once

#include "editor/AcEditor.h"
#include "editor/ReactorList.h"

namespace veldrin {

// The editor as its reactors know it, and the host's side of it: whoever does something calls `tell`.
class VELDRIN_API EditorEvents : public AcEditor {
public:
    EditorEvents();
    ~EditorEvents() override;

    void addReactor(AcEditorReactor* reactor) override { m_reactors.add(reactor); }
    void removeReactor(AcEditorReactor* reactor) override { m_reactors.remove(reactor); }

    // events.tell(&AcEditorReactor::commandEnded, "MOVE")
    template<class... Parameters, class... Arguments>
    void tell(void (AcEditorReactor::*notification)(Parameters...), Arguments... arguments) const {
        m_reactors.tell(notification, arguments...);
    }

private:
    ReactorList<AcEditorReactor> m_reactors;
};

} // namespace veldrin
