#include "messages/questions.h"

#include "messages/message_log.h"

namespace keldrin {

Questions &questions() {
    static Questions asked;
    return asked;
}

bool askForFile(const FileQuestion &question, std::string &path) {
    if (questions().existingFile) {
        return questions().existingFile(question, path);
    }
    ReportInfoLine("There is no file " + path + ".");
    return false;
}

bool askForName(const NameQuestion &question, int &index) {
    return !questions().matchingName || questions().matchingName(question, index);
}

} // namespace keldrin
