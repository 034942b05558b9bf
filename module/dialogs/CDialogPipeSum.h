#pragma once

#include "dialogs/ProjectDialog.h"

#include <memory>
#include <optional>

namespace plumb {

class tblPipe;
class tblPipeSize;
class tblPipeSum;

// Query Pipe: the properties and flows of one pipe. It writes the flows; everything else is the result of the
// Lisp call that shows it, and Lisp's to carry out.
class CDialogPipeSum : public ProjectDialog {
public:
    CDialogPipeSum();
    ~CDialogPipeSum() override;

    // usableTypesForm picks the form in which Lisp is asked for the types.
    void Setup(CDBConnection* connection, bool isStandards, std::int32_t ixPipe, bool usableTypesForm);
    void Release();

protected:
    void load() override;
    void OnOK() override;
    void OnCancel() override;

private:
    // CDialogPipeSum.cpp
    void loadPipe();
    void loadHanger();
    void loadLining();
    void showStaticValues();
    void disableTiedElevations();
    void enableHanger(bool hasHanger);
    void enableLining();

    // pipe_sum_lists.cpp
    void fillTypes();
    void noteTypesWithSizes();
    std::optional<CString> selectTypeWithSizes();
    void warnOfTypeWithoutSizes(const CString& type);
    void fillSizes(const CString& previous);
    void fillSizingTables();
    long resultSize();

    // pipe_sum_flows.cpp
    class Categories;
    void loadFlows();
    void loadFixedFlows(const Categories& categories);
    void loadCalculatedFlows(const Categories& categories);
    double storedFlow(long category, bool isFixed); // 0 without a row
    void addHeading(const char* caption, bool isFixed);
    void addFlow(int row, long category, const CString& name, bool isFixed, const CString& value);
    double convertedFlow() const;
    void focusFirstFlow();
    void relabelFlows();
    int relabel(int row, const Categories& categories, bool isFixed);
    void storeFlows();
    void storeFlow(int row);

    // pipe_sum_result.cpp
    bool checkHanger();
    bool checkAbove(int id, double limit, const char* message);
    void giveResult();
    double number(int id) const;
    double elevation(int id) const;

    long selectedType() const;
    long typeInForce() const; // the selected one; that of the pipe while the list is empty

    DialogGrid m_grid;
    std::int32_t m_ixPipe = 0;
    bool m_usableTypesForm = false;
    long m_openingType = 0;
    long m_currentType = 0; // whose sizes the list holds
    long m_storedSize = 0;
    long m_storedSizingTable = 0; // 0 for none
    bool m_isSizeLocked = false;
    std::vector<double> m_storedFixed; // one for each flow category of the opening type
    std::vector<bool> m_hasSizes;      // one for each type of the list
    std::unique_ptr<tblPipe> m_pipe;   // only read
    std::unique_ptr<tblPipeSum> m_sum;
    std::unique_ptr<tblPipeSize> m_size; // only asked
};

} // namespace plumb
