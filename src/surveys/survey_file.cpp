#include "surveys/survey_file.h"

#include "model/fault.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

std::string SurveyName(const SurveyEntry& survey) { return Trim(Mid(survey.sLine, 2, 18)); }

void ReadSurveys(Session& session) {
  session.user.Status(1, "Reading Survey Identifiers");
  SurveyStore& store = session.surveys;
  store.SurveyCount = 0;
  store.SurveyCaptionCount = 0;
  LineReader in(session.DatasetPath(".sid"));
  while (!in.Eof()) {
    const std::string line = in.ReadLine();
    const std::string kind = Left(line, 1);
    if (kind == "S") {
      store.SurveyCount = Add16(store.SurveyCount, 1);
      SurveyEntry& survey = store.SurveyTable.at(store.SurveyCount);
      survey.sLine = Trim(line);
      survey.first = Add16(store.SurveyCaptionCount, 1);
      survey.last = store.SurveyCaptionCount;
    } else if (kind == "C") {
      store.SurveyCaptionCount = Add16(store.SurveyCaptionCount, 1);
      store.SurveyCaptions.at(store.SurveyCaptionCount) = line;
      store.SurveyTable.at(store.SurveyCount).last = store.SurveyCaptionCount;
    }
  }
}

}  // namespace tessel
