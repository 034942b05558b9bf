#pragma once

#include "host/vqContext.h"

namespace plumb {

inline constexpr const char* kModuleName = "vq_plumb";

// Gives the Lisp layer its turn when a drawing comes to the front and nothing else is at work in it.
class PlumbDocReactor : public AcApDocManagerReactor {
public:
    PlumbDocReactor();
    ~PlumbDocReactor() override;
    void documentActivated(AcApDocument* document) override;
};

// The context of this module.
class vqPlumbContext : public vqContext {
public:
    vqPlumbContext();
    ~vqPlumbContext() override;

private:
    std::unique_ptr<PlumbDocReactor> m_docManagerReactor;
};

} // namespace plumb
