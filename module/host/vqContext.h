#pragma once

#include "drawing/AcDb.h"
#include "host/vqReactors.h"
#include "runtime/CList.h"
#include "runtime/CString.h"

#include <functional>
#include <memory>
#include <string_view>

class AcApDocument;

namespace plumb {

class CDBConnection;
class tblGlobal;
class tblLayer;
class tblLayerKey;
class tblLayerSystem;
class tblTextStyle;
class vqPerProjectData;

// The record objects of a project's standards, made when its connection is open. They never write the columns
// that a standards file does not have.
struct StandardsTables {
    explicit StandardsTables(CDBConnection* connection);
    ~StandardsTables();

    std::unique_ptr<tblGlobal> global;
    std::unique_ptr<tblLayer> layer;
    std::unique_ptr<tblLayerKey> layerKey;
    std::unique_ptr<tblLayerSystem> layerSystem;
    std::unique_ptr<tblTextStyle> textStyle;
};

// One open drawing. Its path is its key, as the host spells it.
class vqPerDocData {
public:
    vqPerDocData(CString path, AcDbDatabase* database, vqPerProjectData* project);
    virtual ~vqPerDocData();
    vqPerDocData(const vqPerDocData&) = delete;
    vqPerDocData& operator=(const vqPerDocData&) = delete;

    const CString sFileName;
    const CString sShortName;
    vqPerProjectData* const project; // counts its drawings
    AcDbDatabase* const database;
};

// One project: a folder, with the connection that all of its open drawings share.
class vqPerProjectData {
public:
    // A current drawing that carries the module's mark opens its project's database at once.
    vqPerProjectData(CString folder, const char* moduleName);
    virtual ~vqPerProjectData();
    vqPerProjectData(const vqPerProjectData&) = delete;
    vqPerProjectData& operator=(const vqPerProjectData&) = delete;

    // True when the connection is open and the record objects are there. With the report flag a failure is
    // told on the command line.
    bool ConnectProject(bool report);
    // Closes the connection; the next ConnectProject opens it afresh.
    void disconnect();

    CDBConnection* connection() const { return m_connection.get(); }
    // For who goes on working while Lisp may disconnect the project: closed then, but still there.
    std::shared_ptr<CDBConnection> sharedConnection() const { return m_connection; }
    const StandardsTables* standards() const { return m_standards.get(); } // null while not connected

    Adesk::Int32 nDocuments = 0; // that point here
    CString sFolder;

private:
    bool OpenProjectDatabase(const CString& folder, bool report);
    bool openOrRepair(const CString& path);
    bool giveUp();
    bool BuildContextTables();
    void connectMarkedDrawing();
    bool isConnected() const;

    const char* m_moduleName;
    std::shared_ptr<CDBConnection> m_connection;
    std::unique_ptr<StandardsTables> m_standards; // on the connection
};

// The open drawings and their projects, kept true by reactors. The head of the documents is the current one.
class vqContext {
public:
    using DocumentRecord = std::unique_ptr<vqPerDocData>;
    using ProjectRecord = std::unique_ptr<vqPerProjectData>;

    struct Factories {
        std::function<DocumentRecord(const CString& path, AcDbDatabase* database, vqPerProjectData* project)>
            makeDocumentRecord;
        std::function<ProjectRecord(const CString& folder)> makeProjectRecord;
    };

    explicit vqContext(Factories factories);
    virtual ~vqContext();
    vqContext(const vqContext&) = delete;
    vqContext& operator=(const vqContext&) = delete;

    vqPerDocData* currentDocument() const; // null without a drawing
    vqPerProjectData* currentProject() const;
    CDBConnection* currentConnection() const;
    const StandardsTables* currentStandards() const; // null without a connected project

    bool setCurrentDocument(AcApDocument* document); // false for null
    bool addOrActivate(const CString& path, AcDbDatabase* database);
    bool removeDocument(const CString& path);

    // On the current document's project; false without one.
    bool ConnectProject(bool report);
    void disconnect();

    bool bCreatingDocument = false; // between the host's start of a document and its being there

    const CList<DocumentRecord>& documents() const { return m_documents; }
    const CList<ProjectRecord>& projects() const { return m_projects; }

private:
    vqPerProjectData* projectOf(const CString& path); // made when there is none

    Factories m_factories;
    CList<ProjectRecord> m_projects;
    CList<DocumentRecord> m_documents;
    std::unique_ptr<vqDocReactor> m_docReactor;
    std::unique_ptr<vqEditorReactor> m_editorReactor;
};

} // namespace plumb
