-- Pages of the manual: links between chapters lead to the pages made of them, and the first heading
-- is the title of the page.
function Link(link)
  if not link.target:match("^%a+:") then
    link.target = link.target:gsub("%.md$", ".html"):gsub("%.md#", ".html#")
  end
  return link
end

function Pandoc(document)
  for _, block in ipairs(document.blocks) do
    if block.t == "Header" and block.level == 1 then
      document.meta.pagetitle = pandoc.utils.stringify(block) .. " - KELDRIN"
      break
    end
  end
  return document
end
