#include "database/CDBConnection.h"

namespace plumb {

CString CDBConnection::Open(const CString&, bool, bool) {
    return {};
}
void CDBConnection::Close() {}

} // namespace plumb
