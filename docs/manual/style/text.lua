-- Formulas of the manual as text for a terminal: fractions as (a)/(b), letters and signs as they are.
local signs = {
  mu = "μ", sigma = "σ", theta = "θ", rho = "ρ", lambda = "λ", pi = "π", Phi = "Φ", partial = "∂",
  sqrt = "√", sum = "Σ", int = "∫", oint = "∮", infty = "∞", approx = "≈", le = "≤", ge = "≥",
  sim = "~", mp = "∓", pm = "±", cdot = "·", dots = "...", qquad = "    ", quad = "  ",
  left = "", right = "",
}

local function grouped(text)
  text = text:sub(2, -2)
  return (text:match("^%w$") or text:match("^%d+$")) and text or "(" .. text .. ")"
end

local function rendered(text)
  local before
  repeat -- from the outside in
    before = text
    text = text:gsub("\\d?frac%s*(%b{})%s*(%b{})", function(a, b)
      return grouped(a) .. "/" .. grouped(b)
    end)
  until text == before
  text = text:gsub("\\mathrm%s*(%b{})", function(a) return a:sub(2, -2) end)
  text = text:gsub("\\text%s*(%b{})", function(a) return a:sub(2, -2) end)
  text = text:gsub("\\operatorname%s*(%b{})", function(a) return " " .. a:sub(2, -2) .. " " end)
  text = text:gsub("\\sqrt%s*(%b{})", function(a) return "√(" .. a:sub(2, -2) .. ")" end)
  text = text:gsub("\\[,;:! ]", " ")
  text = text:gsub("\\(%a+)", function(name) return signs[name] or name end)
  repeat
    before = text
    text = text:gsub("_{(%w+)}", "_%1"):gsub("([_^])(%b{})", function(mark, a)
      return mark .. grouped(a)
    end)
  until text == before
  return (text:gsub("[ \n]+", " "):gsub("^ ", ""):gsub(" $", ""))
end

function Math(math)
  local text = pandoc.Str(rendered(math.text))
  if math.mathtype == "DisplayMath" then
    return { pandoc.LineBreak(), pandoc.Str("    "), text, pandoc.LineBreak() }
  end
  return text
end
