#include "messages/message_log.h"
#include "model/survey_model.h"
#include "physics/apparent_resistivity.h"
#include "projectfile/project_file.h"

#include <cstdio>
#include <string>

// A program of physics and project files alone, without page, toolkit or anybody to ask.
int main() {
    keldrin::SurveyModel model;
    std::string path = KELDRIN_SOURCE_DIR "/tests/projectfile/data/inloop.std";
    if (keldrin::STD_File_Read(model, path) != 0 || model.SoundingCount < 1) {
        std::fprintf(stderr, "the project cannot be read\n");
        return 1;
    }
    keldrin::ARes_Survey(model);
    std::string missing = "no_such_project.std";
    const bool refused = keldrin::STD_File_Read(model, missing) == 1;
    return refused && keldrin::messageLog().LogLineBuffer.size() > 1 ? 0 : 1;
}
