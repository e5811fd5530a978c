#include "Setting.h"

#include "Secrets.h"

#include <utility>

namespace RedfishConfig::App {

Setting::Setting(SettingRecord record)
    : m_Record(std::make_unique<const SettingRecord>(std::move(record))),
      m_Name(&*m_Record->AttributeName),
      m_Type(*m_Record->Type),
      m_MenuPath(&m_Record->MenuPath),
      m_DisplayOrder(m_Record->DisplayOrder)
{
}

Setting::Setting(const RedfishConfig::Client::Attribute& attribute, std::size_t index, const RecordSource& source)
    : Index(index),
      Position(attribute.Position),
      m_Source(&source),
      m_Name(&attribute.Name),
      m_Type(RedfishConfig::Client::Name(attribute.Type)),
      m_MenuPath(&attribute.MenuPath),
      m_DisplayOrder(attribute.DisplayOrder)
{
}

bool Setting::IsPassword() const
{
    return IsPasswordType(m_Type);
}

const SettingRecord& Setting::Record() const
{
    if (m_Record == nullptr) {
        m_Record = std::make_unique<const SettingRecord>(m_Source->RecordOf(*this));
    }
    return *m_Record;
}

} // namespace RedfishConfig::App
