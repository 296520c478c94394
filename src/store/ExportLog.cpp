#include "store/ExportLog.h"

namespace brindle {

void recordExport(SQLiteConnection& db, const std::string& path, UnixTime at) {
    db.run("INSERT OR REPLACE INTO exported_files (path, exported_at) VALUES (?, ?)", path, at);
}

std::vector<std::string> recentExports(SQLiteConnection& db) {
    auto rows = db.prepare("SELECT path FROM exported_files ORDER BY exported_at DESC, path LIMIT 500");
    std::vector<std::string> paths;
    while (rows.step()) paths.push_back(rows.text(0));
    return paths;
}

}  // namespace brindle
