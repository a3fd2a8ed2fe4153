#include "core/plugins/template_plugin.h"

#include "core/contract/codes.h"
#include "core/plugins/template_code.h"

namespace tvw::rgs::core::plugins {

std::vector<std::int32_t> TemplatePlugin::supportedCodes() { return {code::unlisted}; }

std::string TemplatePlugin::getDescription()
{
    return "This is the " + id_ +
           " tool, which is used as a front for more complicated tool structures.";
}

CCamera* TemplatePlugin::createObject(const CCamera::CreateParam& param)
{
    return new TemplateCode(param);
}

} // namespace tvw::rgs::core::plugins
