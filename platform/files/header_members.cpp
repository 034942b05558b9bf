#include "files/header_members.h"

namespace veldrin {

namespace {

const HeaderMember kMembers[] = {
    {"CLAYER", &HeaderVariables::clayer},       {"CELTYPE", &HeaderVariables::celtype},
    {"CECOLOR", &HeaderVariables::cecolor},     {"CELWEIGHT", &HeaderVariables::celweight},
    {"CELTSCALE", &HeaderVariables::celtscale}, {"LTSCALE", &HeaderVariables::ltscale},
    {"TEXTSTYLE", &HeaderVariables::textstyle}, {"TEXTSIZE", &HeaderVariables::textsize},
    {"ELEVATION", &HeaderVariables::elevation}, {"UCSORG", &HeaderVariables::ucsOrigin},
    {"UCSXDIR", &HeaderVariables::ucsXDir},     {"UCSYDIR", &HeaderVariables::ucsYDir},
    {"LUNITS", &HeaderVariables::lunits},       {"LUPREC", &HeaderVariables::luprec},
    {"AUNITS", &HeaderVariables::aunits},       {"AUPREC", &HeaderVariables::auprec},
    {"ANGBASE", &HeaderVariables::angbase},     {"ANGDIR", &HeaderVariables::angdir},
    {"INSUNITS", &HeaderVariables::insunits},   {"MEASUREMENT", &HeaderVariables::measurement},
    {"ORTHOMODE", &HeaderVariables::orthomode}, {"MIRRTEXT", &HeaderVariables::mirrtext},
    {"ATTREQ", &HeaderVariables::attreq},       {"PDMODE", &HeaderVariables::pdmode},
    {"PDSIZE", &HeaderVariables::pdsize},       {"FILLMODE", &HeaderVariables::fillmode},
};

} // namespace

std::span<const HeaderMember> headerMembers() {
    return kMembers;
}

} // namespace veldrin
