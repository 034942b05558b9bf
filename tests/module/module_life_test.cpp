#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbProxyEntity.h"
#include "editor/CommandLine.h"
#include "editor/DocumentManager.h"
#include "host/PlumbModule.h"
#include "host/acrxEntryPoint.h"
#include "host/vqPlumbContext.h"
#include "module/ModuleTest.h"
#include "runtime/AcRxClass.h"
#include "runtime/CException.h"
#include "runtime/ModuleLoader.h"
#include "runtime/afx.h"
#include "ui/UiBackend.h"
#include "util/DrawingHelpers.h"

using namespace plumb;

class ModuleLife : public ModuleTest {
protected:
    ModuleLife() { acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr); }
    static AcRx::AppRetCode load() { return acrxEntryPoint(AcRx::kInitAppMsg, nullptr); }
    static AcRx::AppRetCode unload() { return acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr); }
};

TEST_F(ModuleLife, LoadsAndUnloadsAgainAndAgain) {
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(load(), AcRx::kRetOK);
        ASSERT_TRUE(moduleState().theContext);
        EXPECT_EQ(moduleState().theContext->documents().GetCount(), 1);
        ASSERT_NE(acrxClassByName("PlumbPipe"), nullptr);
        EXPECT_TRUE(PlumbPipe::desc()->isDerivedFrom(AcDbCurve::desc()));
        EXPECT_TRUE(moduleState().bOwnDaoState);
        EXPECT_EQ(AfxGetModuleState()->m_dwVersion, 0x0601U);
        EXPECT_EQ(unload(), AcRx::kRetOK);
        EXPECT_FALSE(moduleState().theContext);
        EXPECT_EQ(acrxClassByName("PlumbPipe"), nullptr);
        EXPECT_EQ(AfxGetModuleState()->m_pDaoState, nullptr);
    }
    EXPECT_EQ(unload(), AcRx::kRetOK) << "nothing to do is no error";
}

TEST_F(ModuleLife, PipesAreProxiesWhileItIsAway) {
    load();
    auto* pipe = new PlumbPipe;
    setEnds(*pipe, {0, 0, 1}, {10, 0, 2});
    ASSERT_TRUE(AppendToModelSpace(pipe));
    const AcDbObjectId id = pipe->objectId();
    pipe->close();
    unload();
    {
        const AcDbObjectPointer<AcDbProxyEntity> proxy(id);
        EXPECT_TRUE(proxy);
    }
    load();
    const AcDbObjectPointer<PlumbPipe> again(id);
    ASSERT_TRUE(again);
    EXPECT_EQ(pointText(again->end()), "10,0,2");
}

TEST_F(ModuleLife, AnotherMessageChangesNothing) {
    EXPECT_EQ(acrxEntryPoint(AcRx::kQuitMsg, nullptr), AcRx::kRetOK);
    EXPECT_FALSE(moduleState().theContext);
    EXPECT_EQ(acrxGetApiVersion(), 0x170000U);
}

TEST_F(ModuleLife, TheBannerComesForEachDrawing) {
    load();
    for (int drawing = 0; drawing < 2; ++drawing) {
        takePrinted();
        EXPECT_EQ(acrxEntryPoint(AcRx::kLoadDwgMsg, nullptr), AcRx::kRetOK);
        EXPECT_EQ(printed.find("\nLoading Veldrin Plumbing ARX 4.1.45 (26111)\n\u00A9"), 0U) << printed;
    }
}

TEST_F(ModuleLife, AnEngineThatSomebodyElseStartedIsLeftRunning) {
    AfxDaoInit();
    _AFX_DAO_STATE* others = AfxGetModuleState()->m_pDaoState;
    load();
    EXPECT_FALSE(moduleState().bOwnDaoState);
    unload();
    EXPECT_EQ(AfxGetModuleState()->m_pDaoState, others);
    delete others;
    AfxGetModuleState()->m_pDaoState = nullptr;
}

TEST_F(ModuleLife, WithoutAnEngineItOffersADownloadAndRefuses) {
    auto& ui = dynamic_cast<veldrin::HeadlessUi&>(host->ui());
    host->modules().setDaoStarter([] { throw CException("no drivers"); });
    ui.queue([](const veldrin::WindowRequest&) { return std::string("No"); });
    EXPECT_EQ(load(), AcRx::kRetError);
    const auto log = ui.takeLog();
    ASSERT_EQ(log.size(), 1U);
    EXPECT_EQ(log[0].text,
              "Error loading database drivers.\nWould you like to download a fix to this error?");
    EXPECT_FALSE(moduleState().theContext || moduleState().bOwnDaoState);
    EXPECT_EQ(acrxClassByName("PlumbPipe"), nullptr);
    host->modules().setDaoStarter({});
    EXPECT_EQ(load(), AcRx::kRetOK);
}

TEST_F(ModuleLife, AStrangerUnderTheNameEndsTheLoadAndLeavesNothing) {
    AcRxClass* stranger = newAcRxClass("PlumbPipe", "AcDbCurve", 1, 1, 0, nullptr, "STRANGER", "");
    takePrinted();
    EXPECT_EQ(load(), AcRx::kRetError);
    EXPECT_EQ(takePrinted(), "\nGeneral Error:  Class mismatch");
    EXPECT_FALSE(moduleState().theContext);
    EXPECT_EQ(AfxGetModuleState()->m_pDaoState, nullptr);
    EXPECT_EQ(acrxClassByName("PlumbPipe"), stranger);
    deleteAcRxClass(stranger);
}
